# The two commands a new machine needs: `make check` and `make demo`.
# Both install whatever Debian packages are missing first.

BUILD      ?= build
ASAN_BUILD ?= build-asan
TSAN_BUILD ?= build-tsan
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 60
FUZZ_CHECK_SECONDS ?= 4
JOBS       ?= $(shell nproc)
CMAKE_ARGS ?=

.PHONY: all deps build check test asan tsan fuzz fuzz-build fuzz-check demo bench clean

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

demo: build
	./scripts/demo.sh $(BUILD)

bench: build
	./scripts/bench.sh $(BUILD)

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
