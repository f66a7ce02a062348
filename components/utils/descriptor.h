// Owns a file descriptor and closes it.
#pragma once

#include <unistd.h>

#include <utility>

namespace zorvanelink::components::utils {

class Descriptor {
  public:
    explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }

    explicit operator bool() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    // False when what was written may not have arrived, and when there was nothing to close.
    bool Close() { return descriptor_ >= 0 && close(std::exchange(descriptor_, -1)) == 0; }

  private:
    int descriptor_;
};

}  // namespace zorvanelink::components::utils
