// The memory family and the forwarders to the core service.
#include "internal/zelk.hpp"

namespace zelk {
namespace {

// len * sizeof(T) must fit the core service's signed 32-bit byte count; beyond that, and
// below 1, the answer is null without asking the core service at all.
template <class T>
T* malloc_array(int len) {
    constexpr int largest = std::numeric_limits<int32_t>::max() / static_cast<int>(sizeof(T));
    if (len < 1 || len > largest) return nullptr;
    return static_cast<T*>(ZELK_Malloc(len * static_cast<int>(sizeof(T))));
}

}  // namespace
}  // namespace zelk

using zelk::malloc_array;

Zelk8u* ZELKS_Malloc_8u(int len) { return malloc_array<Zelk8u>(len); }
Zelk8s* ZELKS_Malloc_8s(int len) { return malloc_array<Zelk8s>(len); }
Zelk16u* ZELKS_Malloc_16u(int len) { return malloc_array<Zelk16u>(len); }
Zelk16s* ZELKS_Malloc_16s(int len) { return malloc_array<Zelk16s>(len); }
Zelk8sc* ZELKS_Malloc_8sc(int len) { return malloc_array<Zelk8sc>(len); }
Zelk32u* ZELKS_Malloc_32u(int len) { return malloc_array<Zelk32u>(len); }
Zelk32s* ZELKS_Malloc_32s(int len) { return malloc_array<Zelk32s>(len); }
Zelk32f* ZELKS_Malloc_32f(int len) { return malloc_array<Zelk32f>(len); }
Zelk16sc* ZELKS_Malloc_16sc(int len) { return malloc_array<Zelk16sc>(len); }
Zelk64u* ZELKS_Malloc_64u(int len) { return malloc_array<Zelk64u>(len); }
Zelk64s* ZELKS_Malloc_64s(int len) { return malloc_array<Zelk64s>(len); }
Zelk64f* ZELKS_Malloc_64f(int len) { return malloc_array<Zelk64f>(len); }
Zelk32sc* ZELKS_Malloc_32sc(int len) { return malloc_array<Zelk32sc>(len); }
Zelk32fc* ZELKS_Malloc_32fc(int len) { return malloc_array<Zelk32fc>(len); }
Zelk64sc* ZELKS_Malloc_64sc(int len) { return malloc_array<Zelk64sc>(len); }
Zelk64fc* ZELKS_Malloc_64fc(int len) { return malloc_array<Zelk64fc>(len); }

void ZELKS_Free(void* ptr) { ZELK_Free(ptr); }
const ZelkLibVersion* ZELKS_GetLibVersion(void) { return ZELK_GetLibVersion(); }
const char* ZELKS_GetStatusString(ZelkStatus status) { return ZELK_GetStatusString(status); }
