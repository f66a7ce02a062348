// The frame parser against its plain model: the first byte says how the rest is cut into reads.
#include <cstdlib>
#include <utility>

#include "components/ipc/frame_parser.h"
#include "tests/components/ipc/frame_model.h"

namespace {

using namespace zorvanelink;

std::size_t nextRead(unsigned& state, unsigned style) {
    state = state * 1103515245U + 12345U;
    std::size_t const sizes[] = {1, 4028, 1 + (state >> 16) % 32, 1 + (state >> 16) % 4028};
    return sizes[style % std::size(sizes)];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    unsigned const style = data[0];
    unsigned state = style;
    std::string rest(reinterpret_cast<char const*>(data + 1), size - 1);
    components::ipc::FrameParser parser;
    test::FrameModel model;
    while (!rest.empty()) {
        auto const bytes = rest.substr(0, nextRead(state, style));
        rest.erase(0, bytes.size());
        std::memcpy(parser.Prepare(bytes.size()), bytes.data(), bytes.size());
        parser.Commit(bytes.size());
        std::vector<test::ShownFrame> shown;
        parser.Parse([&](components::ipc::IPCMsgType type, char const* payload, int length) {
            shown.push_back({type, length, {payload, static_cast<std::size_t>(length)}});
            return true;
        });
        if (shown != model.Receive(bytes) || parser.Capacity() > 16 * 1024 + 4 * size) {
            std::abort();
        }
    }
    return 0;
}
