// Test support shared by every family's tests: guarded arrays, a deterministic random source,
// the lengths that cover bulk and tail, bit-exact comparison, the check-order test and golden
// output hashes. Identical behaviour on the native build and under qemu.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "zelk_signal.h"

namespace zt {

// ---- Guarded arrays.

// Where the inaccessible page sits: right after the array (a read or write at index len faults)
// or right before it (index -1 faults). ZELK_GUARD=before selects the second; the suite runs both.
enum class Guard { after, before };
Guard guard_side();

void* guarded_alloc(size_t bytes, void** base, size_t* mapped);
void guarded_free(void* base, size_t mapped);

// n elements of T against an inaccessible page. n may be 0: the pointer is still valid.
template <class T>
class Guarded {
  public:
    explicit Guarded(size_t n = 0) : n_(n) {
        data_ = static_cast<T*>(guarded_alloc(n * sizeof(T), &base_, &mapped_));
    }
    Guarded(std::initializer_list<T> init) : Guarded(init.size()) {
        std::memcpy(data_, init.begin(), init.size() * sizeof(T));
    }
    Guarded(const std::vector<T>& v) : Guarded(v.size()) {
        if (!v.empty()) std::memcpy(data_, v.data(), v.size() * sizeof(T));
    }
    Guarded(const Guarded& o) : Guarded(o.n_) { std::memcpy(data_, o.data_, n_ * sizeof(T)); }
    Guarded& operator=(const Guarded&) = delete;
    ~Guarded() { guarded_free(base_, mapped_); }

    T* data() { return data_; }
    const T* data() const { return data_; }
    size_t size() const { return n_; }
    int len() const { return static_cast<int>(n_); }
    T& operator[](size_t i) { return data_[i]; }
    const T& operator[](size_t i) const { return data_[i]; }
    T* begin() { return data_; }
    T* end() { return data_ + n_; }
    std::vector<T> vec() const { return std::vector<T>(data_, data_ + n_); }
    void fill_bytes(uint8_t b) { std::memset(data_, b, n_ * sizeof(T)); }

  private:
    size_t n_;
    T* data_;
    void* base_;
    size_t mapped_;
};

// ---- Lengths: 1..33 cover every tail of every block size up to 32 lanes, then larger ones.

std::vector<int> lengths();

// ---- Deterministic random data (splitmix64), identical on both builds.

class Rng {
  public:
    explicit Rng(uint64_t seed = 0x5eed) : s_(seed) {}
    explicit Rng(const std::string& name);
    uint64_t next();
    int64_t range(int64_t lo, int64_t hi);  // inclusive
    double unit();                          // [0, 1)

    // Integers: every bit pattern, with the range ends and small values often.
    // Floating: special values (zeros, infinities, NaNs with payloads, subnormals, extremes),
    // small integers and halves (ties), moderate values and raw bit patterns.
    template <class T> T any();
    template <class T> void fill(T* p, size_t n) {
        for (size_t i = 0; i < n; ++i) p[i] = any<T>();
    }
    template <class T> std::vector<T> vec(size_t n) {
        std::vector<T> v(n);
        fill(v.data(), n);
        return v;
    }

  private:
    uint64_t s_;
};

template <class T> std::vector<T> special_values();

// Complex records are two scalars; tests fill and compare them part by part.
template <class T> struct parts { using scalar = T; static constexpr size_t count = 1; };
template <> struct parts<Zelk8sc> { using scalar = Zelk8s; static constexpr size_t count = 2; };
template <> struct parts<Zelk16sc> { using scalar = Zelk16s; static constexpr size_t count = 2; };
template <> struct parts<Zelk32sc> { using scalar = Zelk32s; static constexpr size_t count = 2; };
template <> struct parts<Zelk64sc> { using scalar = Zelk64s; static constexpr size_t count = 2; };
template <> struct parts<Zelk32fc> { using scalar = Zelk32f; static constexpr size_t count = 2; };
template <> struct parts<Zelk64fc> { using scalar = Zelk64f; static constexpr size_t count = 2; };
template <class T> using scalar_t = typename parts<T>::scalar;
template <class T> scalar_t<T>* scalars(T* p) { return reinterpret_cast<scalar_t<T>*>(p); }
template <class T> const scalar_t<T>* scalars(const T* p) { return reinterpret_cast<const scalar_t<T>*>(p); }

// Random elements of any type, complex ones part by part.
template <class T> void fill_any(Rng& rng, T* p, size_t n) { rng.fill(scalars(p), n * parts<T>::count); }

// ---- Comparison.

// Same bits; where both are NaN and `nan_payload_free` is set, NaN-ness is enough.
template <class T>
bool same(T a, T b, bool nan_payload_free = false) {
    if constexpr (std::is_floating_point_v<T>) {
        if (nan_payload_free && std::isnan(a) && std::isnan(b)) return true;
    }
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <class T> std::string show(T x) {
    if constexpr (std::is_floating_point_v<T>) {
        using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.17g (0x%llx)", double(x),
                      (unsigned long long)std::bit_cast<Bits>(x));
        return buf;
    } else if constexpr (std::is_integral_v<T>) {
        return std::to_string(+x);
    } else {
        return "<record>";
    }
}

// Compares n elements; reports the first few mismatches with their index.
template <class T>
::testing::AssertionResult arrays_equal(const T* got, const T* want, size_t n,
                                        bool nan_payload_free = false) {
    size_t bad = 0;
    std::string msg;
    for (size_t i = 0; i < n; ++i) {
        if (same(got[i], want[i], nan_payload_free)) continue;
        if (++bad <= 4) msg += "\n  [" + std::to_string(i) + "] got " + show(got[i]) + ", want " + show(want[i]);
    }
    if (bad == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << bad << " of " << n << " elements differ:" << msg;
}

// Compares n elements of any type, complex ones part by part.
template <class T>
::testing::AssertionResult elems_equal(const T* got, const T* want, size_t n, bool nan_payload_free = false) {
    return arrays_equal(scalars(got), scalars(want), n * parts<T>::count, nan_payload_free);
}

// ---- Check order: null pointers before counts, counts before the family's own arguments,
// and a failed call writes nothing.

// A call with its pointer arguments in p[0..n), `len`, and, when `bad` is set, the family's own
// argument (scale, divisor, rounding mode...) made invalid.
using Call = std::function<ZelkStatus(void** p, int len, bool bad)>;

struct CheckCase {
    std::string name;
    int pointers;              // number of pointer arguments the call takes
    Call call;
    ZelkStatus bad_status = 0; // status of the bad own argument; 0 when the family has none
    int bad_len = 1;           // below this len the call is a size error
    unsigned late = 0;         // bit k: pointer k is checked after the counts, not before
};

// Runs every failing combination and checks the status and that no buffer changed.
void expect_check_order(const CheckCase& c);

// Cases for the common shapes, picked by the function's signature; a scale argument is made
// bad with -1.0 and good with 1.0. ZT_CASE(f) names the case after the function.
template <class S, class D>
CheckCase check_case(const char* name, ZelkStatus (*f)(const S*, D*, int)) {
    return {name, 2, [f](void** p, int n, bool) { return f((const S*)p[0], (D*)p[1], n); }};
}
template <class T>
CheckCase check_case(const char* name, ZelkStatus (*f)(T*, int)) {
    return {name, 1, [f](void** p, int n, bool) { return f((T*)p[0], n); }};
}
template <class V, class T>
    requires(!std::is_pointer_v<V>)
CheckCase check_case(const char* name, ZelkStatus (*f)(V, T*, int)) {
    return {name, 1, [f](void** p, int n, bool) { return f(V{}, (T*)p[0], n); }};
}
template <class S1, class S2, class D>
CheckCase check_case(const char* name, ZelkStatus (*f)(const S1*, const S2*, D*, int)) {
    return {name, 3, [f](void** p, int n, bool) { return f((const S1*)p[0], (const S2*)p[1], (D*)p[2], n); }};
}
template <class S1, class S2, class D>
CheckCase check_case(const char* name, ZelkStatus (*f)(const S1*, const S2*, D*, int, double)) {
    return {name, 3, [f](void** p, int n, bool bad) {
        return f((const S1*)p[0], (const S2*)p[1], (D*)p[2], n, bad ? -1.0 : 1.0); }, ZELK_STS_SCALE_ERR};
}
template <class S, class D>
CheckCase check_case(const char* name, ZelkStatus (*f)(const S*, D*, int, double)) {
    return {name, 2, [f](void** p, int n, bool bad) {
        return f((const S*)p[0], (D*)p[1], n, bad ? -1.0 : 1.0); }, ZELK_STS_SCALE_ERR};
}
template <class T>
CheckCase check_case(const char* name, ZelkStatus (*f)(T*, int, double)) {
    return {name, 1, [f](void** p, int n, bool bad) { return f((T*)p[0], n, bad ? -1.0 : 1.0); },
            ZELK_STS_SCALE_ERR};
}
// Reductions: f(src, len, outputs..., [hint or scale]). A trailing int is a selector that is
// never refused; a trailing double is a scale. ZT_REDUCTION(f) names the case after f (the shape
// can look like one with a constant operand, so it has a name of its own).
template <class A> A reduction_arg(void** p, int& next_pointer, bool bad) {
    if constexpr (std::is_pointer_v<A>) return static_cast<A>(p[next_pointer++]);
    else if constexpr (std::is_same_v<A, double>) return bad ? -1.0 : 1.0;
    else return A(1);
}
template <class S, class... A>
CheckCase reduction_case(const char* name, ZelkStatus (*f)(const S*, int, A...)) {
    return {name, 1 + (int(std::is_pointer_v<A>) + ... + 0),
            [f](void** p, int n, bool bad) {
                int k = 1;
                const std::tuple<A...> args{reduction_arg<A>(p, k, bad)...};  // in order: a braced list
                return std::apply([&](A... a) { return f(static_cast<const S*>(p[0]), n, a...); }, args);
            },
            (std::is_same_v<A, double> || ...) ? ZELK_STS_SCALE_ERR : 0};
}
// With a constant operand (val, never made bad here): src, val, dst, len [, scale] and
// val, srcDst, len, scale.
template <class S, class V, class D>
    requires(!std::is_pointer_v<V>)
CheckCase check_case(const char* name, ZelkStatus (*f)(const S*, V, D*, int)) {
    return {name, 2, [f](void** p, int n, bool) { return f((const S*)p[0], V{}, (D*)p[1], n); }};
}
template <class S, class V, class D>
    requires(!std::is_pointer_v<V>)
CheckCase check_case(const char* name, ZelkStatus (*f)(const S*, V, D*, int, double)) {
    return {name, 2, [f](void** p, int n, bool bad) { return f((const S*)p[0], V{}, (D*)p[1], n, bad ? -1.0 : 1.0); },
            ZELK_STS_SCALE_ERR};
}
template <class V, class T>
    requires(!std::is_pointer_v<V>)
CheckCase check_case(const char* name, ZelkStatus (*f)(V, T*, int, double)) {
    return {name, 1, [f](void** p, int n, bool bad) { return f(V{}, (T*)p[0], n, bad ? -1.0 : 1.0); }, ZELK_STS_SCALE_ERR};
}
// Two-source reductions: f(src1, src2, len, outputs..., [scale]).
template <class S1, class S2, class... A>
CheckCase reduction_case(const char* name, ZelkStatus (*f)(const S1*, const S2*, int, A...)) {
    return {name, 2 + (int(std::is_pointer_v<A>) + ... + 0),
            [f](void** p, int n, bool bad) {
                int k = 2;
                const std::tuple<A...> args{reduction_arg<A>(p, k, bad)...};
                return std::apply([&](A... a) { return f(static_cast<const S1*>(p[0]), static_cast<const S2*>(p[1]), n, a...); }, args);
            },
            (std::is_same_v<A, double> || ...) ? ZELK_STS_SCALE_ERR : 0};
}
#define ZT_CASE(f) ::zt::check_case(#f, f)
#define ZT_REDUCTION(f) ::zt::reduction_case(#f, f)

// ---- Golden hashes: one row per function of a family's output on fixed random input, the
// same on both builds. ZELK_GOLDEN_PRINT=1 prints the rows instead of checking them.

uint64_t hash_bytes(const void* p, size_t n, uint64_t h = 0xcbf29ce484222325ull);

struct GoldenRow {
    const char* name;
    uint64_t hash;
};

void expect_golden(const char* name, uint64_t got, const std::vector<GoldenRow>& table);

// Hash of n elements with every NaN mapped to one pattern: the payload of a NaN made from two
// NaN operands is left open, and x86 and Arm choose differently.
template <class T> uint64_t hash_canonical(const T* p, size_t n) {
    using S = scalar_t<T>;
    const S* s = scalars(p);
    std::vector<S> v(s, s + n * parts<T>::count);
    if constexpr (std::is_floating_point_v<S>)
        for (S& x : v)
            if (std::isnan(x)) x = std::numeric_limits<S>::quiet_NaN();
    return hash_bytes(v.data(), v.size() * sizeof(S));
}

// The element types of a two-source call f(a, b, dst, len, ...).
template <class F> struct binary_types;
template <class R0, class A, class B, class D, class... R>
struct binary_types<R0 (*)(const A*, const B*, D*, int, R...)> {
    using a = A;
    using b = B;
    using d = D;
};

// The golden row of a two-source call on fixed random operands of 1013 elements (a tail for
// every block size): the output's hash, or, for a scaled call, the hashes at each scale combined.
template <class F>
void expect_golden_binary(const char* name, F f, const std::vector<GoldenRow>& table,
                          std::initializer_list<double> scales = {}) {
    using T = binary_types<F>;
    constexpr int kLen = 1013;
    Rng rng(name);
    Guarded<typename T::a> a(kLen);
    Guarded<typename T::b> b(kLen);
    Guarded<typename T::d> d(kLen);
    fill_any(rng, a.data(), kLen);
    fill_any(rng, b.data(), kLen);
    uint64_t h = 0;
    if constexpr (std::is_invocable_v<F, decltype(a.data()), decltype(b.data()), decltype(d.data()), int, double>) {
        for (double s : scales) {
            f(a.data(), b.data(), d.data(), kLen, s);
            h ^= hash_canonical(d.data(), kLen) * 31;
        }
    } else {
        f(a.data(), b.data(), d.data(), kLen);
        h = hash_canonical(d.data(), kLen);
    }
    expect_golden(name, h, table);
}

}  // namespace zt
