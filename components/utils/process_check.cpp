#include "components/utils/process_check.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <memory>
#include <utility>

#include "components/logger/logger.h"

namespace zorvanelink::components::utils {
namespace {

using logger::Log;

constexpr std::size_t kPieceSize = 256;  // bytes read at once, the closing NUL included
constexpr std::string_view kIgnoredLauncher = "sudo -u ";

struct PipeCloser {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};

// Only such a name can be put into a shell's command line as it stands.
bool isPlainName(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](unsigned char c) {
        return c < 0x80 && (std::isalnum(c) != 0 || c == '.' || c == '_' || c == '-');
    });
}

std::string_view secondColumn(std::string_view line) {
    constexpr std::string_view kBlank = " \t";
    std::size_t const first = line.find_first_not_of(kBlank);
    std::size_t const gap = line.find_first_of(kBlank, first);
    std::size_t const second = line.find_first_not_of(kBlank, gap);
    if (gap == std::string_view::npos || second == std::string_view::npos) {
        return {};
    }
    return line.substr(second, line.find_first_of(" \t\n", second) - second);
}

// Judges the listing piece by piece: a line longer than one piece comes in several, and those
// behind the first belong to the same process.
class Judge {
  public:
    Judge(std::string_view name, bool skipSelf)
        : name_(name), own_pid_(std::to_string(getpid())), skip_self_(skipSelf) {}

    // Every piece in turn, also one that is not judged.
    void follow(std::string_view piece) {
        if (at_line_start_) {
            own_line_ = secondColumn(piece) == own_pid_;
        }
        at_line_start_ = piece.ends_with('\n');
    }

    bool isHit(std::string_view piece) {
        if (piece.find(name_) == std::string_view::npos) {
            return false;
        }
        bool const first = !std::exchange(seen_one_, true);
        return !own_line_ && (skip_self_ || !first);
    }

  private:
    std::string_view name_;
    std::string own_pid_;
    bool skip_self_;
    bool at_line_start_ = true;
    bool own_line_ = false;
    bool seen_one_ = false;
};

enum class Answer { kNo, kYes, kNotRun, kNothingListed };

// Format is the log line of a piece, with the command and the piece.
Answer search(std::string const& command, Judge judge,
              fmt::format_string<std::string const&, std::string_view const&> format) {
    Log().info("Will excute cmd {} in check process", command);
    std::unique_ptr<std::FILE, PipeCloser> const pipe(popen(command.c_str(), "r"));
    if (!pipe) {
        Log().error("Failed to excute cmd {} in check process", command);
        return Answer::kNotRun;
    }
    std::array<char, kPieceSize> buffer{};
    Answer answer = Answer::kNothingListed;
    while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe.get()) != nullptr) {
        std::string_view const piece(buffer.data());
        judge.follow(piece);
        answer = Answer::kNo;
        if (piece.find(kIgnoredLauncher) != std::string_view::npos) {
            continue;
        }
        Log().info(format, command, piece);
        if (judge.isHit(piece)) {
            return Answer::kYes;
        }
    }
    return answer;
}

}  // namespace

std::string GetFileName(std::string_view path) {
    std::size_t const separator = path.find_last_of("/\\");
    return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

bool CheckRunningUIProcessByName(std::string const& name, bool skipSelf) {
    if (!isPlainName(name)) {
        Log().warning("Process name {} can not be checked", name);
        return false;
    }
    Judge const judge(name, skipSelf);
    Answer answer = search("ps -ef|grep \"" + name + "$\" |grep -v grep", judge,
                           "Excute cmd {} with result {} in check process");
    if (answer == Answer::kNo || answer == Answer::kNothingListed) {
        // A process that was started with arguments.
        Answer const withArguments = search("ps -ef|grep \"" + name + " \" |grep -v grep", judge,
                                            "Excute cmd2 {} with result {} in check process");
        if (answer == withArguments && answer == Answer::kNothingListed) {
            // Not even the own process.
            Log().warning("No process {} in the process table, is ps missing", name);
        }
        answer = withArguments;
    }
    return answer == Answer::kYes;
}

}  // namespace zorvanelink::components::utils
