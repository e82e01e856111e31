// The transform suite defines the engine's planning and destroying functions itself; being in
// the executable, they take the place of the engine's for the library. They pass each call on,
// record it, count plans and, on request, return a null plan as an engine that fails would.
#pragma once

#include "zelk_fft.h"

namespace zt::plans {

struct Call {
    int n = 0, sign = 0, rank = 0, howmany_rank = 0;
    unsigned flags = 0;
    const void *in = nullptr, *ii = nullptr, *out = nullptr, *io = nullptr, *howmany_dims = nullptr;
    orv_fft_iodim dim{};
    const void* plan = nullptr;  // what the call returned
};

extern Call last;       // the last planning call
extern long made;       // plans returned since the start
extern long destroyed;  // non-null plans destroyed since the start
extern bool fail;       // planning returns null without asking the engine

}  // namespace zt::plans
