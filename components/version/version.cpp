#include "components/version/version.h"

namespace zorvanelink::components::version {

std::string GetVersion() {
    return ZVL_VERSION;
}

std::string GetBuildId() {
    return ZVL_BUILD_ID;
}

}  // namespace zorvanelink::components::version
