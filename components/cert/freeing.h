// Private to components/cert: owning pointers to what OpenSSL allocates.
#pragma once

namespace zorvanelink::components::utils {

template <auto Free>
struct Freeing {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};

}  // namespace zorvanelink::components::utils
