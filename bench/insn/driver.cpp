// One call of one implementation on n elements, in a fresh process, for counting instructions
// under qemu: `zelk_insn <function> <impl> <n> <fill>`. The buffers are always prepared for
// `fill` elements, so a run at n and a run at 0 differ by the call's work alone. A job with a
// setup (a transform's plan) is set up for `fill` elements in both runs and called only at
// n > 0: the difference is one execution at that length.
// `zelk_insn --list` prints the function/implementation pairs and the sizes to count them at.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "../cases.hpp"

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "--list") {
        for (const auto& f : zb::functions()) {
            std::string sizes;
            for (int n : f.sizes.empty() ? std::vector<int>{4096, 1048576} : f.sizes) sizes += " " + std::to_string(n);
            for (const auto& impl : f.impls) std::printf("%s %s%s\n", f.name.c_str(), impl.who.c_str(), sizes.c_str());
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
            if (f.restore) f.restore(fill);  // the same work at n and at 0
            if (impl.setup) impl.setup(fill);
            if (!impl.setup || n > 0) impl.run(n);
            return 0;
        }
    }
    std::fprintf(stderr, "no %s/%s\n", name.c_str(), who.c_str());
    return 1;
}
