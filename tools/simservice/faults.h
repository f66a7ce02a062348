// Waits for the moments that the faults of a scenario name and then has their actions done. One
// thread.
#pragma once

#include <memory>
#include <vector>

#include "tools/simservice/scenario.h"
#include "tools/simservice/scheduler.h"

namespace zorvanelink::simservice {

class Faults {
  public:
    Faults(std::vector<Fault> const& faults, Scheduler& scheduler,
           std::function<void(Action const&)> perform);

    // A fault that waits for its delay is dropped when the session (or, for faults of the link,
    // the link) that it was meant for has ended.
    void Happened(Moment moment);

  private:
    struct Plan {
        Fault fault;
        int done = 0;
    };

    std::shared_ptr<int> const& lifeOf(Moment moment) const;

    std::vector<Plan> plans_;
    Scheduler& scheduler_;
    std::function<void(Action const&)> perform_;
    std::shared_ptr<int> process_ = std::make_shared<int>();
    std::shared_ptr<int> link_ = std::make_shared<int>();
    std::shared_ptr<int> session_ = std::make_shared<int>();
};

}  // namespace zorvanelink::simservice
