// The command line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zorvanelink::simservice {

struct Options {
    std::string scenario;  // empty: the built-in one
    std::string record;
    std::uint16_t port = 35421;  // the first one tried
    std::string port_file = "/tmp//zlinkipc";
    std::string log_dir;
    std::string control;
    std::string write_profile;
    bool force = false;
    bool quiet = false;
    bool help = false;
    bool version = false;
};

// Without the program's name. False, with a sentence for the user, for what is no option.
bool ParseOptions(std::vector<std::string> const& arguments, Options& options, std::string& error);

std::string HelpText();

}  // namespace zorvanelink::simservice
