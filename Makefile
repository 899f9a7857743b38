# The two commands a new machine needs: `make check` and `make demo`.
# Both install whatever Debian packages are missing first.
# `make check-arm64` cross-builds for aarch64 and runs the tests under qemu.

BUILD      ?= build
ASAN_BUILD ?= build-asan
ARM64_BUILD ?= build-arm64
QEMU_AARCH64 ?= qemu-aarch64
JOBS       ?= $(shell nproc)
CMAKE_ARGS ?=

.PHONY: all deps deps-arm64 build check test asan check-arm64 demo bench clean

all: build

deps:
	./scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_ARGS)
	cmake --build $(BUILD) -j $(JOBS)

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DVOSK_SANITIZE=ON -DVOSK_BENCH=OFF $(CMAKE_ARGS)
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
		ctest --output-on-failure -j $(JOBS)

check: test asan

deps-arm64:
	./scripts/install-deps.sh --arm64

# The emulator runs every test program (CTest) and, through launcher scripts,
# the programs the tests start in turn: see cmake/ChildPrograms.cmake.
check-arm64: deps-arm64
	emulator=$$(command -v $(QEMU_AARCH64)) || { echo "no $(QEMU_AARCH64)" >&2; exit 1; }; \
	cmake -S . -B $(ARM64_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
		-DCMAKE_TOOLCHAIN_FILE=$(CURDIR)/cmake/toolchains/aarch64-linux-gnu.cmake \
		-DCMAKE_CROSSCOMPILING_EMULATOR="$$emulator" -DVOSK_BENCH=OFF $(CMAKE_ARGS)
	cmake --build $(ARM64_BUILD) -j $(JOBS)
	file $(ARM64_BUILD)/voskOamUpgrader/src/vosk-oam-upgrader | grep 'ARM aarch64'
	cd $(ARM64_BUILD) && ctest --output-on-failure -j $(JOBS)

demo: build
	./scripts/demo.sh $(BUILD)

bench: build
	./scripts/bench.sh $(BUILD)

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(ARM64_BUILD)
