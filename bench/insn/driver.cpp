// One call of one implementation on n elements, in a fresh process, for counting instructions
// under qemu: `zelk_insn <function> <impl> <n> <fill>`. The buffers are always prepared for
// `fill` elements, so a run at n and a run at 0 differ by the call's work alone. A job with a
// setup (a transform's plan) is set up for `fill` elements in both runs and called only at
// n > 0: the difference is one execution at that length.
// `zelk_insn --list` prints the function/implementation pairs, with a function's own sizes.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "../cases.hpp"

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "--list") {
        for (const auto& f : zb::functions())
            for (const auto& impl : f.impls) {
                std::printf("%s %s", f.name.c_str(), impl.who.c_str());
                for (int n : f.sizes) std::printf(" %d", n);
                std::printf("\n");
            }
        return 0;
    }
    if (argc != 5) {
        std::fprintf(stderr, "usage: %s <function> <impl> <n> <fill> | --list\n", argv[0]);
        return 2;
    }
    const std::string name = argv[1], who = argv[2];
    const int n = std::atoi(argv[3]);
    for (const auto& f : zb::functions()) {
        if (f.name != name) continue;
        for (const auto& impl : f.impls) {
            if (impl.who != who) continue;
            const int fill = std::atoi(argv[4]);
            zb::prepare(f.data, size_t(fill));
            if (impl.setup) impl.setup(fill);
            if (!impl.setup || n > 0) impl.run(n);
            return 0;
        }
    }
    std::fprintf(stderr, "no %s/%s\n", name.c_str(), who.c_str());
    return 1;
}
