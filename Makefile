# The two commands a new machine needs: `make check` and `make demo`.
# Both install whatever Debian packages are missing first.
# `make check-arm64` cross-builds for aarch64 and runs the tests under qemu.

BUILD      ?= build
ASAN_BUILD ?= build-asan
TSAN_BUILD ?= build-tsan
FUZZ_BUILD ?= build-fuzz
ARM64_BUILD ?= build-arm64
QEMU_AARCH64 ?= qemu-aarch64
FUZZ_SECONDS ?= 60
FUZZ_CHECK_SECONDS ?= 4
JOBS       ?= $(shell nproc)
CMAKE_ARGS ?=

.PHONY: all deps deps-arm64 build check test asan tsan fuzz fuzz-build fuzz-check check-arm64 demo bench bench-scale clean

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

# ThreadSanitizer over what runs threads: the whole runs and the unit tests
# labelled threads, death tests left out (they abort on purpose and their
# abort handler is no signal-safe code). A report fails the run
# (halt_on_error), also one from a child process: every report is kept in
# $(TSAN_BUILD)/tsan-reports/. No exit sleep: every thread is joined.
tsan: deps
	cmake -S . -B $(TSAN_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVOSK_TSAN=ON -DVOSK_BENCH=OFF $(CMAKE_ARGS)
	cmake --build $(TSAN_BUILD) -j $(JOBS)
	rm -rf $(TSAN_BUILD)/tsan-reports && mkdir -p $(TSAN_BUILD)/tsan-reports
	cd $(TSAN_BUILD) && \
		TSAN_OPTIONS="halt_on_error=1 atexit_sleep_ms=0 log_path=$(abspath $(TSAN_BUILD))/tsan-reports/report" \
		ctest --output-on-failure -j $(JOBS) -L 'e2e|threads' -E 'DeathTest'; status=$$?; \
		if [ -n "$$(ls tsan-reports)" ]; then cat tsan-reports/*; echo "tsan: reports above" >&2; exit 1; fi; \
		exit $$status

# libFuzzer programs (clang): `make fuzz` runs each for FUZZ_SECONDS,
# `make fuzz-check` for FUZZ_CHECK_SECONDS. See docs/reliability.md.
fuzz-build: deps
	cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang \
		-DCMAKE_CXX_COMPILER=clang++ -DVOSK_FUZZ=ON -DVOSK_WERROR=OFF -DVOSK_TESTS=OFF -DVOSK_BENCH=OFF $(CMAKE_ARGS)
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target fuzzers

fuzz: fuzz-build
	./scripts/fuzz.sh $(FUZZ_BUILD) $(FUZZ_SECONDS)

fuzz-check: fuzz-build
	./scripts/fuzz.sh $(FUZZ_BUILD) $(FUZZ_CHECK_SECONDS)

check: test asan tsan fuzz-check

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

# Whole runs of generated nodes of 100k and 1M objects and of four schemas;
# see docs/performance.md. SCALE_SIZES overrides the sizes.
bench-scale: build
	./bench/scale/bench-scale.sh $(BUILD) $(SCALE_SIZES)

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(TSAN_BUILD) $(FUZZ_BUILD) $(ARM64_BUILD)
