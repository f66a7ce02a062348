#include "tools/simservice/faults.h"

namespace zorvanelink::simservice {

Faults::Faults(std::vector<Fault> const& faults, Scheduler& scheduler,
               std::function<void(Action const&)> perform)
    : scheduler_(scheduler), perform_(std::move(perform)) {
    for (auto const& fault : faults) {
        plans_.push_back({fault});
    }
}

std::shared_ptr<int> const& Faults::lifeOf(Moment moment) const {
    if (moment == Moment::kSignal) {
        return process_;
    }
    return moment == Moment::kLink ? link_ : session_;
}

void Faults::Happened(Moment moment) {
    if (moment == Moment::kLinkEnd) {
        link_ = std::make_shared<int>();
    }
    if (moment == Moment::kSessionEnd || moment == Moment::kLinkEnd) {
        session_ = std::make_shared<int>();
        return;
    }
    for (auto& plan : plans_) {
        if (plan.fault.on != moment) {
            continue;
        }
        scheduler_.After(Scheduler::Milliseconds(plan.fault.after_ms),
                         [this, &plan, alive = std::weak_ptr(lifeOf(moment))] {
                             bool const left =
                                 plan.fault.times == 0 || plan.done < plan.fault.times;
                             if (!alive.expired() && left) {
                                 ++plan.done;
                                 perform_(plan.fault.action);
                             }
                         });
    }
}

}  // namespace zorvanelink::simservice
