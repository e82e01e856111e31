// FFT and DFT, one row per family and type: check order and statuses of Init and execution, the
// record and the plan it asks the engine for, failed Inits that hold nothing, transforms against
// a double-precision DFT (exact and shifted arrays, in place), the normalisation to the bit, no
// allocation in an execution, and round trips.
#include <climits>

#include "alloc_hook.hpp"
#include "dft_ref.hpp"
#include "plan_hook.hpp"
#include "zt.hpp"

namespace {

using zt::cplx;
using zt::Layout;
using S = ZelkTransformSpec;
enum Shape { kCplx, kSplit, kR2C, kC2R };
constexpr Layout kFrom[] = {Layout::interleaved, Layout::split, Layout::real, Layout::half};
constexpr Layout kTo[] = {Layout::interleaved, Layout::split, Layout::half, Layout::real};

template <class R> struct Rec {  // the record's layout
    void* plan;
    int32_t len, sign, flag;
    R planScalar;
};

struct Row {
    const char* name;
    Shape shape;
    bool single, fft;
    std::function<ZelkStatus(int size, int direction, int flag, S** spec)> init;
    std::function<ZelkStatus(void* const* arrays, const S* spec)> run;  // sources, then destinations
    ZelkStatus (*release)(S*);
    std::function<ZelkStatus(void* srcDst, const S* spec)> in_place;
};

auto rinit(ZelkStatus (*f)(int, int, S**)) { return [f](int n, int, int fl, S** p) { return f(n, fl, p); }; }
template <class A, class B> auto run(ZelkStatus (*f)(A*, B*, const S*)) {
    return [f](void* const* p, const S* s) { return f(static_cast<A*>(p[0]), static_cast<B*>(p[1]), s); };
}
template <class R> auto run(ZelkStatus (*f)(const R*, const R*, R*, R*, const S*)) {
    return [f](void* const* p, const S* s) { return f((R*)p[0], (R*)p[1], (R*)p[2], (R*)p[3], s); };
}

#define ZT_ROWS(K, F)                                                                                                  \
    {#K "CToC_32fc", kCplx, true, F, ZELKS_##K##CToCInit_32fc, run(ZELKS_##K##CToC_32fc), ZELKS_##K##CToCRelease_32fc, {}}, \
    {#K "CToC_64fc", kCplx, false, F, ZELKS_##K##CToCInit_64fc, run(ZELKS_##K##CToC_64fc), ZELKS_##K##CToCRelease_64fc, {}}, \
    {#K "CToC_32f", kSplit, true, F, ZELKS_##K##CToCInit_32f, run(ZELKS_##K##CToC_32f), ZELKS_##K##CToCRelease_32f, {}},    \
    {#K "CToC_64f", kSplit, false, F, ZELKS_##K##CToCInit_64f, run(ZELKS_##K##CToC_64f), ZELKS_##K##CToCRelease_64f, {}},   \
    {#K "RToC_32f", kR2C, true, F, rinit(ZELKS_##K##RToCInit_32f), run(ZELKS_##K##RToC_32f), ZELKS_##K##RToCRelease_32f, {}}, \
    {#K "RToC_64f", kR2C, false, F, rinit(ZELKS_##K##RToCInit_64f), run(ZELKS_##K##RToC_64f), ZELKS_##K##RToCRelease_64f, {}}, \
    {#K "CToR_32f", kC2R, true, F, rinit(ZELKS_##K##CToRInit_32f), run(ZELKS_##K##CToR_32f), ZELKS_##K##CToRRelease_32f, {}}, \
    {#K "CToR_64f", kC2R, false, F, rinit(ZELKS_##K##CToRInit_64f), run(ZELKS_##K##CToR_64f), ZELKS_##K##CToRRelease_64f, {}}

const std::vector<Row> kRows = [] {
    std::vector<Row> rows = {ZT_ROWS(FFT, true), ZT_ROWS(DFT, false)};
    rows[0].in_place = [](void* p, const S* s) { return ZELKS_FFTCToC_32fc_I(static_cast<Zelk32fc*>(p), s); };
    rows[1].in_place = [](void* p, const S* s) { return ZELKS_FFTCToC_64fc_I(static_cast<Zelk64fc*>(p), s); };
    return rows;
}();

bool complex_shape(Shape s) { return s == kCplx || s == kSplit; }
int length(const Row& r, int size) { return r.fft ? 1 << size : size; }
// The arrays of a call: a split side is one buffer, real parts first.
template <class R> std::vector<void*> arrays(Shape s, R* in, R* out, int n) {
    return s == kSplit ? std::vector<void*>{in, in + n, out, out + n} : std::vector<void*>{in, out};
}
S* const kSentinel = reinterpret_cast<S*>(0x5eed);

TEST(Transform, InitChecksInOrderAndWritesNothing) {
    struct Bad { int size, flag; bool null_out; ZelkStatus want; };
    const std::vector<Bad> fft = {{99, 0, true, 1}, {28, 1, false, 15}, {-1, 1, false, 15}, {INT_MIN, 1, false, 15},
                                  {28, 0, false, 15}, {3, 0, false, 14}, {3, 5, false, 14}, {3, -1, false, 14}};
    const std::vector<Bad> dft = {{0, 9, true, 1}, {0, 1, false, 2}, {-7, 1, false, 2}, {134217729, 1, false, 9},
                                  {INT_MAX, 1, false, 9}, {0, 0, false, 2}, {134217729, 5, false, 9}, {5, 0, false, 14}};
    for (const Row& row : kRows)
        for (const Bad& b : row.fft ? fft : dft) {
            S* spec = kSentinel;
            zt::alloc::reset();
            const long made = zt::plans::made;
            EXPECT_EQ(row.init(b.size, 1, b.flag, b.null_out ? nullptr : &spec), b.want) << row.name << " " << b.size << "," << b.flag;
            EXPECT_TRUE(spec == kSentinel && zt::alloc::stats().calls == 0 && zt::plans::made == made) << row.name;
        }
}

// Inits at the ends of the range and in each direction: the record, and the plan asked for (no
// data, flags 0; the split planner gets the placeholder's address twice). Real plans of 2^27
// points take seconds, so the largest length is planned for the complex shapes only.
template <class R> void check_record(const Row& row, int size, int direction, int flag) {
    SCOPED_TRACE(std::string(row.name) + " size " + std::to_string(size) + " direction " + std::to_string(direction));
    S* spec = nullptr;
    zt::alloc::reset();
    const long destroyed = zt::plans::destroyed;
    ASSERT_EQ(row.init(size, direction, flag, &spec), 0);
    const auto* r = reinterpret_cast<const Rec<R>*>(spec);
    const zt::plans::Call& c = zt::plans::last;
    const int n = length(row, size);
    EXPECT_TRUE(zt::alloc::stats().last_size == int(sizeof(Rec<R>)) && r->plan == c.plan && r->len == n &&
                r->flag == flag && c.n == n && c.flags == 0u);
    EXPECT_TRUE(!complex_shape(row.shape) || r->sign == (direction > 0 ? -1 : 1));
    EXPECT_TRUE(row.shape != kCplx || (c.sign == r->sign && !c.in && !c.out));
    EXPECT_TRUE(row.shape != kSplit ||
                (c.rank == 1 && c.dim.n == n && c.dim.is == 1 && c.dim.os == 1 && c.howmany_rank == 0 &&
                 !c.howmany_dims && c.in == &r->planScalar && c.ii == &r->planScalar && !c.out && !c.io));
    EXPECT_TRUE(complex_shape(row.shape) || (!c.in && !c.out));
    EXPECT_EQ(row.release(spec), 0);
    EXPECT_TRUE(zt::plans::destroyed == destroyed + 1 && zt::alloc::stats().outstanding == 0);
}

TEST(Transform, RecordAndPlanAtTheEnds) {
    for (const Row& row : kRows) {
        const int top = row.fft ? 27 : 134217728, mid = row.fft ? 5 : 97;
        for (auto [size, dir] : {std::pair{row.fft ? 0 : 1, 1}, {mid, 1000}, {mid, 0}, {mid, -3}, {top, 1}})
            if (size != top || complex_shape(row.shape))
                row.single ? check_record<float>(row, size, dir, 1 + size % 4) : check_record<double>(row, size, dir, 1 + size % 4);
        EXPECT_EQ(row.release(nullptr), 0);
    }
}

TEST(Transform, FailedInitHoldsNothing) {
    for (const Row& row : kRows) {
        zt::alloc::for_each_failure([&](long k) {
            S* spec = kSentinel;
            const ZelkStatus status = row.init(3, 1, 2, &spec);
            if (zt::alloc::stats().calls < k) return void(row.release(spec));
            EXPECT_TRUE(status == ZELK_STS_MALLOC_ERR && spec == kSentinel) << row.name << " allocation " << k;
        });
        S* spec = kSentinel;
        zt::plans::fail = true;
        zt::alloc::reset();
        EXPECT_EQ(row.init(3, 1, 2, &spec), ZELK_STS_MALLOC_ERR) << row.name << " no plan";
        zt::plans::fail = false;
        EXPECT_TRUE(spec == kSentinel && zt::alloc::stats().outstanding == 0) << row.name;
    }
}

// Every null pointer, a record without a plan and records with a bad length give their status
// and write nothing.
template <class R> void check_run_statuses(const Row& row) {
    SCOPED_TRACE(row.name);
    S* spec = nullptr;
    ASSERT_EQ(row.init(3, 1, 1, &spec), 0);
    const int n = length(row, 3);
    zt::Guarded<R> in(size_t(zt::reals(kFrom[row.shape], n))), out(size_t(zt::reals(kTo[row.shape], n)));
    out.fill_bytes(0x3c);
    const auto before = out.vec();
    auto expect = [&](std::vector<void*> p, const S* s, ZelkStatus want, const char* what) {
        zt::alloc::reset();
        EXPECT_EQ(row.run(p.data(), s), want) << what;
        EXPECT_TRUE(zt::arrays_equal(out.data(), before.data(), before.size()) && zt::alloc::stats().calls == 0) << what;
    };
    const auto p = arrays(row.shape, in.data(), out.data(), n);
    for (size_t i = 0; i < p.size(); ++i) {
        auto q = p;
        q[i] = nullptr;
        expect(q, spec, 1, "null array");
    }
    expect(p, nullptr, 1, "null spec");
    Rec<R> fake = *reinterpret_cast<const Rec<R>*>(spec);
    for (auto [len, want] : row.fft ? std::vector<std::pair<int, ZelkStatus>>{{0, 15}, {-8, 15}, {134217729, 15}}
                                    : std::vector<std::pair<int, ZelkStatus>>{{0, 2}, {-8, 2}, {134217729, 9}}) {
        fake.len = len;
        expect(p, reinterpret_cast<S*>(&fake), want, "bad length");
    }
    fake.plan = nullptr;
    expect(p, reinterpret_cast<S*>(&fake), 1, "no plan");
    row.release(spec);
}

TEST(Transform, RunChecksInOrderAndWritesNothing) {
    for (const Row& row : kRows) row.single ? check_run_statuses<float>(row) : check_run_statuses<double>(row);
}

// The flag's factor, as the rule forms it: the divisor in double, rounded to R, inverted in R.
template <class R> R factor(int flag, bool forward, int n) {
    const double d = flag == 3 ? std::sqrt(double(n)) : (flag == 1) == forward && flag < 3 ? double(n) : 0;
    return d == 0 ? R(1) : R(1) / R(d);
}

// Each flag: the result within tolerance of the reference times the factor, and bit for bit the
// unscaled result (flag 4) times the factor; in place within tolerance; arrays shifted by one
// element from where they start (misaligned).
template <class R> void check_transforms(const Row& row, int size, int direction, int shift) {
    const int n = length(row, size);
    SCOPED_TRACE(std::string(row.name) + " n=" + std::to_string(n) + " direction " + std::to_string(direction) + " shift " +
                 std::to_string(shift));
    const bool forward = row.shape == kR2C || (row.shape != kC2R && direction > 0);
    const Layout from = kFrom[row.shape], to = kTo[row.shape];
    zt::Rng rng(row.name + std::to_string(n));
    std::vector<R> x(static_cast<size_t>(zt::reals(from, n)));
    for (R& v : x) v = R(rng.unit() * 2 - 1);
    const auto want = zt::expected(from, to, zt::values(from, x.data(), x.data() + n, n), n, forward ? -1 : 1);
    std::vector<R> raw;
    for (int flag : {4, 1, 2, 3}) {
        S* spec = nullptr;
        ASSERT_EQ(row.init(size, direction, flag, &spec), 0);
        zt::Guarded<R> in(x.size() + size_t(shift)), out(size_t(zt::reals(to, n) + shift));
        std::copy(x.begin(), x.end(), in.data() + shift);
        R* y = out.data() + shift;
        zt::alloc::reset();
        ASSERT_EQ(row.run(arrays(row.shape, in.data() + shift, y, n).data(), spec), 0);
        EXPECT_EQ(zt::alloc::stats().calls, 0) << "allocation in an execution";
        EXPECT_TRUE(row.shape == kC2R || std::equal(x.begin(), x.end(), in.data() + shift)) << "source changed";
        const R f = factor<R>(flag, forward, n);
        auto scaled = want;
        for (cplx& w : scaled) w *= double(f);
        if (flag == 4) raw.assign(y, y + zt::reals(to, n));
        EXPECT_LE(zt::rel_error(zt::values(to, y, y + n, n), scaled), zt::dft_tolerance<R>(n)) << "flag " << flag;
        for (size_t i = 0; i < raw.size(); ++i) EXPECT_TRUE(zt::same(y[i], f == R(1) ? raw[i] : raw[i] * f)) << "flag " << flag;
        if (row.in_place) {
            std::copy(x.begin(), x.end(), in.data() + shift);
            EXPECT_EQ(row.in_place(in.data() + shift, spec), 0);
            EXPECT_LE(zt::rel_error(zt::values(to, in.data() + shift, y, n), scaled), zt::dft_tolerance<R>(n)) << "in place";
        }
        row.release(spec);
    }
}

TEST(Transform, AgainstTheReferenceAndNormalisedExactly) {
    const std::vector<int> orders = {0, 1, 2, 3, 5, 7, 10}, lens = {1, 2, 3, 5, 6, 13, 97, 100, 1009};
    EXPECT_NE(factor<float>(3, true, 97), float(1 / std::sqrt(97.0)));  // lengths 6 and 97 tell the f32 rule
    for (const Row& row : kRows)
        for (int size : row.fft ? orders : lens)
            for (int direction : complex_shape(row.shape) ? std::vector<int>{1, 0} : std::vector<int>{1})
                for (int shift : {0, 1})
                    row.single ? check_transforms<float>(row, size, direction, shift)
                               : check_transforms<double>(row, size, direction, shift);
}

// Forward then inverse with the same flag (1, 2 or 3) gives the input back; RToC's inverse is the
// CToR of the same family and type, two rows on.
template <class R> void check_round_trip(const Row& a, const Row& b, int size, int flag) {
    const int n = length(a, size);
    SCOPED_TRACE(std::string(a.name) + " n=" + std::to_string(n) + " flag " + std::to_string(flag));
    zt::Rng rng(a.name);
    std::vector<R> x(size_t(zt::reals(kFrom[a.shape], n))), y(size_t(zt::reals(kTo[a.shape], n))), z(x.size());
    for (R& v : x) v = R(rng.unit() - 0.5);
    S *f = nullptr, *g = nullptr;
    ASSERT_EQ(a.init(size, 1, flag, &f) | b.init(size, 0, flag, &g), 0);
    EXPECT_EQ(a.run(arrays(a.shape, x.data(), y.data(), n).data(), f) | b.run(arrays(b.shape, y.data(), z.data(), n).data(), g), 0);
    a.release(f), b.release(g);
    const Layout l = kFrom[a.shape];
    EXPECT_LE(zt::rel_error(zt::values(l, z.data(), z.data() + n, n), zt::values(l, x.data(), x.data() + n, n)),
              2 * zt::dft_tolerance<R>(n));
}

TEST(Transform, RoundTrips) {
    for (size_t i = 0; i < kRows.size(); ++i)
        for (int size : kRows[i].fft ? std::vector<int>{0, 4, 9} : std::vector<int>{1, 7, 360})
            for (int flag = 1; flag <= 3 && kRows[i].shape != kC2R; ++flag) {
                const Row& inverse = kRows[kRows[i].shape == kR2C ? i + 2 : i];
                kRows[i].single ? check_round_trip<float>(kRows[i], inverse, size, flag)
                                : check_round_trip<double>(kRows[i], inverse, size, flag);
            }
}

}  // namespace
