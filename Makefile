# The project's commands. Each installs what is missing first (scripts/install-deps.sh).
#   make demo   build natively and run examples/demo
#   make test   build native, AArch64 (run under qemu) and sanitizer flavours; run the suite on all three
#   make bench  benchmarks against peer libraries
.PHONY: all deps build build-aarch64 build-asan demo test test-native test-aarch64 test-asan bench clean

CTEST := ctest --output-on-failure -j2 --test-dir

all: build

deps:
	@scripts/install-deps.sh

build: deps
	@cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
	@cmake --build build

build-aarch64: deps
	@cmake -S . -B build-aarch64 -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake >/dev/null
	@cmake --build build-aarch64

build-asan: deps
	@cmake -S . -B build-asan -G Ninja -DZELK_SANITIZE=ON >/dev/null
	@cmake --build build-asan

demo: build
	@./build/bin/demo

test-native: build
	$(CTEST) build
test-aarch64: build-aarch64
	$(CTEST) build-aarch64
test-asan: build-asan
	$(CTEST) build-asan

test: test-native test-aarch64 test-asan

# The benchmarks build into the native and AArch64 trees; results land in build/bench/.
bench: deps
	@cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DZELK_BENCH=ON >/dev/null
	@cmake --build build
	@cmake -S . -B build-aarch64 -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake -DZELK_BENCH=ON >/dev/null
	@cmake --build build-aarch64
	@scripts/bench.sh

clean:
	rm -rf build build-aarch64 build-asan
