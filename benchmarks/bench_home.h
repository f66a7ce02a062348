// Folders of a benchmark's own, removed at its end.
#pragma once

#include <QTemporaryDir>

#include "components/logger/logger.h"

namespace zorvanelink::bench {

class BenchHome {
  public:
    BenchHome() {
        if (!home_.isValid()) {
            qFatal("no temporary folder");
        }
        for (char const* const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
            qputenv(variable, home_.path().toLocal8Bit());
        }
        // Lines go to a file, as in the program; the terminal keeps the table.
        components::logger::Logger::enable_console_log_ = false;
        components::logger::Logger::SetDefaultLogPath(Path());
    }
    ~BenchHome() { components::logger::Logger::ShutDown(); }
    BenchHome(BenchHome const&) = delete;
    BenchHome& operator=(BenchHome const&) = delete;

    std::string Path() const { return home_.path().toStdString(); }

  private:
    QTemporaryDir home_;
};

}  // namespace zorvanelink::bench
