// Stands in for libFuzzer: runs every file of a corpus folder, then a number of deterministic
// mutations of them.
//
//   fuzz_<name> <folder or file> [mutations]
//
// An input that ends the program is left behind as fuzz-crash.bin in the working folder.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace {

constexpr std::size_t kMaxInput = 64 * 1024;  // bytes
constexpr std::size_t kMaxInsert = 64;        // bytes
constexpr int kMaxSteps = 6;                  // mutations of one input
constexpr std::array<std::int64_t, 18> kInteresting = {
    0,          1,         -1,  2,   11,     12,     13,         16,
    127,        128,       255, 256, 0x7FFF, 0x8000, 0x7FFFFFFF, -0x80000000LL,
    0xFFFFFFFF, 1LL << 62,
};

std::string const* g_running = nullptr;

// Also from a signal handler: only calls that are safe there.
void keepInput() {
    if (g_running == nullptr) {
        return;
    }
    int const file = open("fuzz-crash.bin", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file >= 0) {
        [[maybe_unused]] auto const written = write(file, g_running->data(), g_running->size());
        close(file);
    }
}

void onSignal(int number) {
    keepInput();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

void run(std::string const& input) {
    // A copy of exactly this size, so that one byte beyond it is seen.
    std::vector<std::uint8_t> const bytes(input.begin(), input.end());
    g_running = &input;
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    g_running = nullptr;
}

class Mutator {
  public:
    explicit Mutator(std::vector<std::string> const& corpus) : corpus_(corpus) {}

    std::string Next() {
        std::string input = corpus_[below(corpus_.size())];
        for (auto steps = 1 + below(kMaxSteps); steps > 0; --steps) {
            step(input);
        }
        input.resize(std::min(input.size(), kMaxInput));
        return input;
    }

  private:
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : engine_() % limit; }

    void step(std::string& input) {
        std::size_t const at = below(input.size() + 1);
        switch (below(7)) {
            case 0:
                flip(input, at, static_cast<char>(1U << below(8)));
                break;
            case 1:
                flip(input, at, static_cast<char>(below(256)));
                break;
            case 2:
                input.insert(at, 1 + below(kMaxInsert), static_cast<char>(below(256)));
                break;
            case 3:
                input.erase(at, 1 + below(kMaxInsert));
                break;
            case 4:
                input.resize(at);
                break;
            case 5:
                splice(input, at);
                break;
            default:
                writeInteger(input, at);
        }
    }

    static void flip(std::string& input, std::size_t at, char mask) {
        if (at < input.size()) {
            input[at] = static_cast<char>(input[at] ^ mask);
        }
    }

    void splice(std::string& input, std::size_t at) {
        std::string const& other = corpus_[below(corpus_.size())];
        std::size_t const from = below(other.size() + 1);
        input.insert(at, other, from, 1 + below(other.size() + 1));
    }

    void writeInteger(std::string& input, std::size_t at) {
        std::int64_t const number = kInteresting[below(kInteresting.size())];
        std::size_t const width = std::size_t{1} << below(4);
        input.replace(at, width, reinterpret_cast<char const*>(&number), width);
    }

    std::vector<std::string> const& corpus_;
    std::mt19937_64 engine_{1};
};

std::vector<std::string> readCorpus(std::filesystem::path const& path) {
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_directory(path)) {
        for (auto const& entry : std::filesystem::directory_iterator(path)) {
            files.push_back(entry.path());
        }
    } else {
        files.push_back(path);
    }
    std::sort(files.begin(), files.end());  // the same mutations on every machine
    std::vector<std::string> corpus;
    for (auto const& file : files) {
        std::ifstream stream(file, std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(stream),
                            std::istreambuf_iterator<char>());
    }
    return corpus;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s <corpus> [mutations]\n", argv[0]);
        return 2;
    }
    auto const corpus = readCorpus(argv[1]);
    if (corpus.empty()) {
        std::fprintf(stderr, "no corpus in %s\n", argv[1]);
        return 2;
    }
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(keepInput);
    }
    std::signal(SIGABRT, onSignal);
    for (auto const& input : corpus) {
        run(input);
    }
    long const mutations = argc > 2 ? std::strtol(argv[2], nullptr, 10) : 0;
    Mutator mutator(corpus);
    for (long i = 0; i < mutations; ++i) {
        run(mutator.Next());
    }
    std::printf("%zu files and %ld mutations\n", corpus.size(), mutations);
    return 0;
}
