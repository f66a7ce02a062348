// The frame parser against its plain model: the first byte says how the rest is cut into reads.
#include "components/ipc/frame_parser.h"
#include "tests/components/ipc/frame_model.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

std::size_t nextRead(unsigned& state, unsigned style) {
    state = state * 1103515245U + 12345U;
    std::size_t const sizes[] = {1, 4028, 1 + (state >> 16) % 32, 1 + (state >> 16) % 4028};
    return sizes[style % std::size(sizes)];
}

}  // namespace

void zorvanelink::test::Fuzz(std::string const& input) {
    unsigned const style = input.empty() ? 0 : static_cast<unsigned char>(input.front());
    unsigned state = style;
    components::ipc::FrameParser parser;
    FrameModel model;
    for (std::size_t at = 1; at < input.size();) {
        auto const bytes = input.substr(at, nextRead(state, style));
        at += bytes.size();
        std::memcpy(parser.Prepare(bytes.size()), bytes.data(), bytes.size());
        parser.Commit(bytes.size());
        std::vector<ShownFrame> shown;
        parser.Parse([&](components::ipc::IPCMsgType type, char const* payload, int length) {
            shown.push_back({type, length, {payload, static_cast<std::size_t>(length)}});
            return true;
        });
        Require(shown == model.Receive(bytes) && parser.Capacity() <= 16 * 1024 + 4 * input.size());
    }
}
