#include "zt.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace zt {

// ---- Guarded arrays.

Guard guard_side() {
    static const Guard side = [] {
        const char* e = std::getenv("ZELK_GUARD");
        return e && std::string(e) == "before" ? Guard::before : Guard::after;
    }();
    return side;
}

void* guarded_alloc(size_t bytes, void** base, size_t* mapped) {
    const size_t page = size_t(sysconf(_SC_PAGESIZE));
    const size_t body = (bytes + page - 1) / page * page;
    *mapped = body + page;
    void* m = mmap(nullptr, *mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (m == MAP_FAILED) {
        std::perror("mmap");
        std::abort();
    }
    *base = m;
    auto* b = static_cast<uint8_t*>(m);
    if (guard_side() == Guard::after) {
        mprotect(b + body, page, PROT_NONE);
        return b + body - bytes;  // the last element ends at the guard page
    }
    mprotect(b, page, PROT_NONE);
    return b + page;  // the first element starts at the guard page
}

void guarded_free(void* base, size_t mapped) { munmap(base, mapped); }

// ---- Lengths.

std::vector<int> lengths() {
    std::vector<int> v;
    for (int n = 1; n <= 33; ++n) v.push_back(n);
    v.push_back(257);
    v.push_back(4099);
    return v;
}

// ---- Random data.

Rng::Rng(const std::string& name) : s_(hash_bytes(name.data(), name.size())) {}

uint64_t Rng::next() {
    uint64_t z = (s_ += 0x9e3779b97f4a7c15ull);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
}

int64_t Rng::range(int64_t lo, int64_t hi) {
    return lo + int64_t(next() % uint64_t(hi - lo + 1));
}

double Rng::unit() { return double(next() >> 11) * 0x1p-53; }

template <class T> std::vector<T> special_values() {
    using L = std::numeric_limits<T>;
    if constexpr (std::is_integral_v<T>) {
        std::vector<T> v = {L::min(), T(L::min() + 1), L::max(), T(L::max() - 1), 0, 1, 2, 3};
        if constexpr (std::is_signed_v<T>) v.insert(v.end(), {T(-1), T(-2), T(-3)});
        return v;
    } else {
        using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
        constexpr int mant = L::digits - 1;
        const Bits exp_all = (Bits(1) << (sizeof(T) * 8 - 1)) - (Bits(1) << mant);
        const Bits sign = Bits(1) << (sizeof(T) * 8 - 1);
        return {T(0), T(-0.0), L::infinity(), -L::infinity(), L::quiet_NaN(), -L::quiet_NaN(),
                std::bit_cast<T>(Bits(exp_all | 1)),                         // signalling NaN
                std::bit_cast<T>(Bits(exp_all | (Bits(1) << (mant - 1)) | 0x2345)),  // payload
                std::bit_cast<T>(Bits(sign | exp_all | (Bits(1) << (mant - 1)) | 0x77)),
                L::denorm_min(), -L::denorm_min(), std::bit_cast<T>(Bits((Bits(1) << mant) - 1)),
                L::min(), -L::min(), L::max(), -L::max(), T(1), T(-1), T(0.5), T(-0.5),
                T(1.5), T(2.5), T(-2.5), T(3.5)};
    }
}

template <class T> T Rng::any() {
    const uint64_t pick = next() & 7;
    if (pick == 0) {
        static const std::vector<T> s = special_values<T>();
        return s[next() % s.size()];
    }
    if constexpr (std::is_integral_v<T>) {
        if (pick == 1) return T(range(-100, 100));
        return T(next());
    } else {
        if (pick == 1) return T(range(-400, 400)) * T(0.5);
        if (pick <= 3) return T((unit() * 2 - 1) * 1e4);
        using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
        return std::bit_cast<T>(Bits(next()));
    }
}

#define ZT_INSTANTIATE(T) \
    template T Rng::any<T>(); \
    template std::vector<T> special_values<T>();
ZT_INSTANTIATE(uint8_t)
ZT_INSTANTIATE(int8_t)
ZT_INSTANTIATE(uint16_t)
ZT_INSTANTIATE(int16_t)
ZT_INSTANTIATE(uint32_t)
ZT_INSTANTIATE(int32_t)
ZT_INSTANTIATE(uint64_t)
ZT_INSTANTIATE(int64_t)
ZT_INSTANTIATE(float)
ZT_INSTANTIATE(double)
#undef ZT_INSTANTIATE

// ---- Check order.

void expect_check_order(const CheckCase& c) {
    SCOPED_TRACE(c.name);
    constexpr size_t kBytes = 4096;
    constexpr int kLen = 16;  // a valid length that fits every buffer below
    std::vector<Guarded<uint8_t>> bufs;
    for (int k = 0; k < c.pointers; ++k) bufs.emplace_back(kBytes);
    for (int k = 0; k < c.pointers; ++k) std::memset(bufs[k].data(), 0xA5 + k, kBytes);
    std::vector<void*> p;
    for (auto& b : bufs) p.push_back(b.data());

    auto untouched = [&]() {
        for (int k = 0; k < c.pointers; ++k)
            for (size_t i = 0; i < kBytes; ++i)
                if (bufs[k][i] != uint8_t(0xA5 + k))
                    return ::testing::AssertionFailure() << "buffer " << k << " written at byte " << i;
        return ::testing::AssertionSuccess();
    };
    auto expect = [&](ZelkStatus want, void** ptrs, int len, bool bad, const char* what) {
        EXPECT_EQ(c.call(ptrs, len, bad), want) << what << ", len " << len;
        EXPECT_TRUE(untouched()) << what << ", len " << len;
    };

    for (int k = 0; k < c.pointers; ++k) {
        std::vector<void*> q = p;
        q[k] = nullptr;
        std::string what = "null pointer " + std::to_string(k);
        const ZelkStatus with_bad_len = (c.late >> k & 1) ? ZELK_STS_SIZE_ERR : ZELK_STS_NULL_PTR_ERR;
        expect(with_bad_len, q.data(), 0, false, what.c_str());
        expect(ZELK_STS_NULL_PTR_ERR, q.data(), kLen, true, what.c_str());
        expect(with_bad_len, q.data(), -1, true, what.c_str());
    }
    for (int len : {c.bad_len - 1, -1, std::numeric_limits<int>::min()}) {
        expect(ZELK_STS_SIZE_ERR, p.data(), len, false, "bad length");
        if (c.bad_status) expect(ZELK_STS_SIZE_ERR, p.data(), len, true, "bad length and argument");
    }
    if (c.bad_status) expect(c.bad_status, p.data(), kLen, true, "bad argument");
}

// ---- Golden hashes.

uint64_t hash_bytes(const void* p, size_t n, uint64_t h) {
    const auto* c = static_cast<const uint8_t*>(p);
    for (size_t i = 0; i < n; ++i) h = (h ^ c[i]) * 0x100000001b3ull;
    return h;
}

void expect_golden(const char* name, uint64_t got, const std::vector<GoldenRow>& table) {
    if (std::getenv("ZELK_GOLDEN_PRINT")) {
        std::printf("    {\"%s\", 0x%016llxull},\n", name, (unsigned long long)got);
        return;
    }
    for (const auto& row : table)
        if (std::string(row.name) == name) {
            EXPECT_EQ(got, row.hash) << name << ": output differs from the golden hash";
            return;
        }
    ADD_FAILURE() << "no golden row for " << name << "; got 0x" << std::hex << got;
}

}  // namespace zt
