// The benchmarked jobs: for each function, our call and every peer call that does the same job,
// run on the same buffers. Shared by the timed runner (x86-64) and the instruction-count driver
// (AArch64 under qemu).
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zb {

// How the source buffers are filled: typical values, no NaNs or subnormals (which would measure
// the floating unit's slow paths, not the code); `bits`: random bit patterns, for integer keys;
// `column`: a column chunk (cases.cpp, prepare_column).
// `f32_positive`, `f64_positive`: floats or doubles in (0, 64], where no input scan of the
// mathematics functions finds anything, so the scans run to the end.
enum class Data { f32, i16, bits, f64, column, f32_positive, f64_positive };

struct Impl {
    std::string who;                  // "ZELK" for ours, else the peer's name
    std::function<void(int n)> run;   // one call on n elements of the global buffers
    std::function<void(int n)> setup = {};  // if set: made once for n before the calls, untimed
                                            // and not counted (a transform's plan)
};

struct Function {
    std::string name;                 // e.g. "Add_32f"
    Data data;
    double bytes_per_elem;            // bytes read plus written per element; 0: not streaming
    std::vector<Impl> impls;          // ours first
    // For jobs that overwrite their input (sorts): puts the pristine input back before each
    // call, outside the measure (the timer pauses; the counting driver runs it at the fill size
    // in both runs, so it cancels out).
    std::function<void(int n)> restore = nullptr;
    // Sizes of its own, for jobs whose n is not a vector length (a matrix product's n is the
    // element count of each square matrix); empty: the common sizes.
    std::vector<int> sizes = {};
};

// Three arrays a, b (sources) and c (destination) with room for `max_elems` elements of up to
// 16 bytes, 64-byte aligned.
struct Buffers {
    uint8_t* a;
    uint8_t* b;
    uint8_t* c;
};
const Buffers& buffers();
void prepare(Data data, size_t max_elems);

const std::vector<Function>& functions();

}  // namespace zb
