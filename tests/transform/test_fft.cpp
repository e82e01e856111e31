// FFT and DFT, one row per family and type: check order, statuses and failures of Init and execution,
// the record, and transforms against a double-precision DFT normalised to the bit, in place and back.
#include <dlfcn.h>

#include <climits>

#include "alloc_hook.hpp"
#include "dft_ref.hpp"
#include "zelk_fft.h"
#include "zt.hpp"

// The engine's split planner and plan destroyers, defined here in front of the engine's: the planner
// records its arguments and passes the call on, or fails as the engine would; the destroyers count.
struct { int n; const void *ri, *ii, *plan; long destroyed; bool fail; } plans;

#define ZT_PLAN_HOOKS(P, R)                                                                                    \
    P##plan P##plan_guru_split_dft(int r, const P##iodim* d, int hr, const P##iodim* hd, R* ri, R* ii, R* ro,  \
                                   R* io, unsigned f) {                                                        \
        static auto* const next = (decltype(&P##plan_guru_split_dft))dlsym(RTLD_NEXT, #P "plan_guru_split_dft"); \
        plans.n = d->n, plans.ri = ri, plans.ii = ii;                                                          \
        return P##plan(plans.plan = plans.fail ? nullptr : next(r, d, hr, hd, ri, ii, ro, io, f));             \
    }                                                                                                          \
    void P##destroy_plan(P##plan p) {                                                                          \
        static auto* const next = (decltype(&P##destroy_plan))dlsym(RTLD_NEXT, #P "destroy_plan");                \
        plans.destroyed += p != nullptr, next(p);                                                              \
    }
ZT_PLAN_HOOKS(orv_fftf_, float)
ZT_PLAN_HOOKS(orv_fft_, double)

namespace {

using zt::Layout;
using S = ZelkTransformSpec;
enum Shape { kCplx, kSplit, kR2C, kC2R };  // the first two complex to complex
constexpr Layout kFrom[] = {Layout::interleaved, Layout::split, Layout::real, Layout::half};
constexpr Layout kTo[] = {Layout::interleaved, Layout::split, Layout::half, Layout::real};

// The record's layout. An f32 record is a prefix of an f64 one; an execution reads its head only.
template <class R> struct Rec { void* plan; int32_t len, sign, flag; R planScalar; };

// A row's calls take untyped arrays, the sources first; a split side is two, the real parts first.
struct Row {
    const char* name; Shape shape; bool single, fft;  // f32; the size is an order
    std::function<ZelkStatus(int size, int direction, int flag, S** spec)> init;
    std::function<ZelkStatus(void* const* arrays, const S* spec)> run, in_place;
    ZelkStatus (*release)(S*);
};

auto rinit(ZelkStatus (*f)(int, int, S**)) { return [f](int n, int, int fl, S** p) { return f(n, fl, p); }; }
template <class T> T arg(void* const* p, size_t& i, const S* s) {
    if constexpr (std::is_same_v<T, const S*>) return s; else return static_cast<T>(p[i++]);
}
template <class... A> std::function<ZelkStatus(void* const*, const S*)> run(ZelkStatus (*f)(A...)) {
    return [f](void* const* p, const S* s) { size_t i = 0; return std::apply(f, std::tuple<A...>{arg<A>(p, i, s)...}); };
}

#define ZT_ROWS(K, F, T, I)                                                                                            \
    {#K "CToC_" #T "fc", kCplx, T == 32, F, ZELKS_##K##CToCInit_##T##fc, run(ZELKS_##K##CToC_##T##fc), I, ZELKS_##K##CToCRelease_##T##fc}, \
    {#K "CToC_" #T "f", kSplit, T == 32, F, ZELKS_##K##CToCInit_##T##f, run(ZELKS_##K##CToC_##T##f), {}, ZELKS_##K##CToCRelease_##T##f},   \
    {#K "RToC_" #T "f", kR2C, T == 32, F, rinit(ZELKS_##K##RToCInit_##T##f), run(ZELKS_##K##RToC_##T##f), {}, ZELKS_##K##RToCRelease_##T##f}, \
    {#K "CToR_" #T "f", kC2R, T == 32, F, rinit(ZELKS_##K##CToRInit_##T##f), run(ZELKS_##K##CToR_##T##f), {}, ZELKS_##K##CToRRelease_##T##f}
const std::vector<Row> kRows = {ZT_ROWS(FFT, true, 32, run(ZELKS_FFTCToC_32fc_I)), ZT_ROWS(FFT, true, 64, run(ZELKS_FFTCToC_64fc_I)),
                                ZT_ROWS(DFT, false, 32, {}), ZT_ROWS(DFT, false, 64, {})};

int length(const Row& r, int size) { return r.fft ? 1 << size : size; }
template <class R> std::vector<void*> arrays(Shape s, R* in, R* out, int n) {
    return s == kSplit ? std::vector<void*>{in, in + n, out, out + n} : std::vector<void*>{in, out};
}
S* const kSentinel = reinterpret_cast<S*>(0x5eed);

// Init: bad arguments in order, an engine that cannot plan (split rows, at both ends of the range)
// and each allocation failing give their status, allocate only past the checks, keep nothing. An
// execution's null pointers, also beside a bad length, no plan and bad lengths write nothing.
TEST(Transform, ChecksInOrderAndFailsCleanly) {
    struct Bad { int size, flag; bool null_out; ZelkStatus want; bool valid = false; };
    const std::vector<Bad> fft = {{99, 0, true, 1}, {28, 1, false, 15}, {-1, 1, false, 15}, {INT_MIN, 1, false, 15}, {28, 0, false, 15},
                                  {3, 0, false, 14}, {3, 5, false, 14}, {3, -1, false, 14}, {0, 4, false, 9, true}, {27, 1, false, 9, true}};
    const std::vector<Bad> dft = {{0, 9, true, 1}, {0, 1, false, 2}, {-7, 1, false, 2}, {134217729, 1, false, 9}, {INT_MAX, 1, false, 9},
                                  {0, 0, false, 2}, {134217729, 5, false, 9}, {5, 0, false, 14}, {1, 4, false, 9, true}, {134217728, 1, false, 9, true}};
    for (const Row& row : kRows) {
        plans.fail = true;
        for (const Bad& b : row.fft ? fft : dft) {
            S* spec = kSentinel;
            zt::alloc::reset();
            if (b.valid && row.shape != kSplit) continue;
            EXPECT_EQ(row.init(b.size, 1, b.flag, b.null_out ? nullptr : &spec), b.want) << row.name << " " << b.size << "," << b.flag;
            EXPECT_TRUE(spec == kSentinel && zt::alloc::stats().calls == b.valid && zt::alloc::stats().outstanding == 0) << row.name;
        }
        plans.fail = false;
        zt::alloc::for_each_failure([&](long k) {
            S* spec = kSentinel;
            if (const ZelkStatus status = row.init(3, 1, 2, &spec); zt::alloc::stats().calls < k) row.release(spec);
            else EXPECT_TRUE(status == ZELK_STS_MALLOC_ERR && spec == kSentinel) << row.name << " allocation " << k;
        });
        EXPECT_EQ(row.release(nullptr), 0);

        S* spec = nullptr;
        ASSERT_EQ(row.init(3, 1, 1, &spec), 0);
        const int n = length(row, 3), bad_len = row.fft ? 15 : 2;
        zt::Guarded<double> in(size_t(zt::reals(kFrom[row.shape], n))), out(size_t(zt::reals(kTo[row.shape], n)));
        std::fill(out.begin(), out.end(), 7.0);
        const auto p = arrays(row.shape, in.data(), out.data(), n);
        Rec<float> bad = *reinterpret_cast<const Rec<float>*>(spec);
        for (auto [len, plan, want] : {std::tuple{0, bad.plan, bad_len}, {-8, bad.plan, bad_len},
                                       {134217729, bad.plan, row.fft ? 15 : 9}, {0, (void*)nullptr, 1}})
            for (size_t i = 0; i <= p.size() + 1; ++i) {  // the array made null; past them none, then the spec
                auto q = p;
                if (i < q.size()) q[i] = nullptr;
                bad.len = len, bad.plan = plan;
                zt::alloc::reset();
                EXPECT_EQ(row.run(q.data(), i > p.size() ? nullptr : reinterpret_cast<S*>(&bad)), i == p.size() ? want : 1)
                    << row.name << " null " << i << ", length " << len;
                EXPECT_TRUE(std::count(out.begin(), out.end(), 7.0) == out.len() && zt::alloc::stats().calls == 0);
            }
        row.release(spec);
    }
}

// The flag's factor, as the rule forms it: the divisor in double, rounded to R, inverted in R.
template <class R> R factor(int flag, bool forward, int n) {
    const double d = flag == 3 ? std::sqrt(double(n)) : (flag == 1) == forward && flag < 3 ? double(n) : 0;
    return d == 0 ? R(1) : R(1) / R(d);
}

// Each flag: the record; flag 4 within tolerance of the reference, the others bit for bit that
// times the factor, also in place, and taken back by the inverse with the same flag (the row
// backwards, or CToR after RToC); arrays shifted by one element; no allocation; sources kept.
template <class R> void check_transforms(size_t i, int size, int direction, int shift) {
    const Row& row = kRows[i];
    const int n = length(row, size);
    SCOPED_TRACE(::testing::Message() << row.name << " n=" << n << " direction " << direction << " shift " << shift);
    const bool forward = row.shape == kR2C || (row.shape != kC2R && direction > 0);
    const Layout from = kFrom[row.shape], to = kTo[row.shape];
    zt::Rng rng(row.name + std::to_string(n));
    std::vector<R> x(size_t(zt::reals(from, n))), raw, z(x.size());
    for (R& v : x) v = R(rng.unit() * 2 - 1);
    const auto want = zt::expected(from, to, zt::values(from, x.data(), n), n, forward ? -1 : 1);
    for (int flag : {4, 1, 2, 3}) {
        S* spec = nullptr;
        zt::alloc::reset();
        const long destroyed = plans.destroyed;
        ASSERT_EQ(row.init(size, direction, flag, &spec), 0);
        const auto* r = reinterpret_cast<const Rec<R>*>(spec);
        const bool split_plan = r->plan == plans.plan && plans.n == n && plans.ri == &r->planScalar && plans.ii == &r->planScalar;
        EXPECT_TRUE(zt::alloc::stats().last_size == int(sizeof(Rec<R>)) && r->len == n && r->flag == flag &&
                    (row.shape > kSplit || r->sign == (direction > 0 ? -1 : 1)) && (row.shape != kSplit || split_plan))
            << "record, flag " << flag;
        zt::Guarded<R> in(x.size() + size_t(shift)), out(size_t(zt::reals(to, n) + shift));
        R* const src = std::copy(x.begin(), x.end(), in.data() + shift) - x.size(), *const y = out.data() + shift;
        ASSERT_EQ(row.run(arrays(row.shape, src, y, n).data(), spec), 0);
        EXPECT_TRUE(zt::alloc::stats().calls == 1 && (row.shape == kC2R || std::equal(x.begin(), x.end(), src)));
        if (flag == 4) raw.assign(y, y + zt::reals(to, n));
        EXPECT_TRUE(flag != 4 || zt::rel_error(zt::values(to, y, n), want) <= zt::dft_tolerance<R>(n)) << "reference";
        for (size_t k = 0; k < raw.size(); ++k) EXPECT_TRUE(zt::same(y[k], raw[k] * factor<R>(flag, forward, n))) << "flag " << flag;
        if (row.in_place) {
            const std::vector<void*> p{std::copy(x.begin(), x.end(), src) - x.size(), src};
            EXPECT_EQ(row.in_place(p.data(), spec), 0);
            EXPECT_LE(zt::rel_error(zt::values(to, src, n), zt::values(to, y, n)), zt::dft_tolerance<R>(n)) << "in place";
        }
        EXPECT_TRUE(row.release(spec) == 0 && plans.destroyed == destroyed + 1 && zt::alloc::stats().outstanding == 0);
        if (flag == 4 || !forward) continue;
        const Row& back = kRows[row.shape == kR2C ? i + 1 : i];
        ASSERT_TRUE(back.init(size, 0, flag, &spec) == 0 && back.run(arrays(back.shape, y, z.data(), n).data(), spec) == 0);
        back.release(spec);
        EXPECT_LE(zt::rel_error(zt::values(from, z.data(), n), zt::values(from, x.data(), n)), 2 * zt::dft_tolerance<R>(n))
            << "round trip, flag " << flag;
    }
}

TEST(Transform, AgainstTheReferenceNormalisedExactlyAndBack) {
    EXPECT_NE(factor<float>(3, true, 97), float(1 / std::sqrt(97.0)));  // length 97 tells the f32 rule
    for (size_t i = 0; i < kRows.size(); ++i)
        for (int size : kRows[i].fft ? std::vector<int>{0, 1, 3, 7} : std::vector<int>{1, 2, 6, 97})
            for (int direction : {1, 0})
                for (int shift = 0; shift < 2 && (direction || kRows[i].shape <= kSplit); ++shift)
                    (kRows[i].single ? check_transforms<float> : check_transforms<double>)(i, size, direction, shift);
}

}  // namespace
