// What every family file includes: the public declarations and the shared rules.
#pragma once

#include "zelk_signal.h"
#include "loops.hpp"
#include "rules.hpp"
#include "simd.hpp"
