# Quillon's commands. `make run` and `make test` work on a fresh Debian machine: each installs what is
# missing from Debian's packages first.
SHELL := /bin/bash
.SHELLFLAGS := -eu -o pipefail -c
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 30
# `make run FILE=notes.txt ARGS=-help` reads both from its environment, where make puts them unchanged

WIN := build/windows
NATIVE := build/native
WINE_RUN := cmake/wine-run.sh
XVFB := xvfb-run -a -s "-screen 0 1280x1024x24"

.PHONY: all run test dist deps native windows fuzz-build wineprefix test-native test-windows test-fuzz fuzz \
        bench format clean

all: native windows

deps:
	@bash scripts/install-deps.sh

# Configured once: later builds reconfigure themselves when a CMake file changes, and a configure
# stamps a new build date that would relink every program.
$(NATIVE)/CMakeCache.txt: | deps
	cmake -S . -B $(NATIVE) -DCMAKE_BUILD_TYPE=Debug > /dev/null
$(WIN)/CMakeCache.txt: | deps
	cmake -S . -B $(WIN) -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release > /dev/null
build/fuzz/CMakeCache.txt: | deps
	CC=clang CXX=clang++ cmake -S . -B build/fuzz -DQUILLON_FUZZ=ON > /dev/null
build/bench/CMakeCache.txt: | deps
	cmake -S . -B build/bench -DQUILLON_BENCH=ON > /dev/null

# Each build brings its own -j: MAKEFLAGS= keeps a parallel make's job server from its make.
native: deps $(NATIVE)/CMakeCache.txt
	MAKEFLAGS= cmake --build $(NATIVE) -j $(JOBS)

windows: deps $(WIN)/CMakeCache.txt
	MAKEFLAGS= cmake --build $(WIN) -j $(JOBS)

# The signed MSI, the portable zip and their SHA256SUMS, beside the tree in build/windows/dist.
dist: windows
	MAKEFLAGS= cmake --build $(WIN) --target dist

fuzz-build: deps build/fuzz/CMakeCache.txt
	MAKEFLAGS= cmake --build build/fuzz -j $(JOBS)

# The tests' prefix, made once (the first start of Wine takes 10-20 s), with the tests' Wine settings and
# the fonts' links.
wineprefix: $(WIN)/wineprefix/.settings
$(WIN)/wineprefix/.settings: tests/wineprefix.reg scripts/wine-fonts.reg | deps
	@$(WINE_RUN) --boot
	$(WINE_RUN) reg import 'Z:$(subst /,\,$(CURDIR)/tests/wineprefix.reg)'
	$(WINE_RUN) reg import 'Z:$(subst /,\,$(CURDIR)/scripts/wine-fonts.reg)'
	@# a server started without a display would serve the tests without one
	@$(WINE_RUN) --server -w
	@touch $@

# Only what Quillon needs, so that a second start takes seconds.
run: deps $(WIN)/CMakeCache.txt
	MAKEFLAGS= cmake --build $(WIN) --target run_tree -j $(JOBS)
	@read -r -a args <<<"$${ARGS-}"; bash scripts/run.sh $${FILE:+--file "$$FILE"} "$${args[@]}"

test-native: native
	ctest --test-dir $(NATIVE) -j $(JOBS) --output-on-failure

test-windows: windows wineprefix
	$(XVFB) bash -c 'ctest --test-dir $(WIN) --output-on-failure; rc=$$?; $(WINE_RUN) --server -k || true; exit $$rc'

# Every fuzzer still builds and survives a short run from its seeds.
test-fuzz: fuzz-build
	@bash scripts/run-fuzzers.sh build/fuzz 10

# Two at a time, each log shown whole when it ends: the builds and the tests' Wine prefix (one build's
# serial stretches, its links and generators, leave a core to the other), then the native tests, then
# the Windows tests, which mostly wait for windows, beside the fuzzers, which keep one core busy each.
test: deps
	@echo "building side by side; each log appears when its part is done"
	@$(MAKE) --no-print-directory -j2 -Otarget native windows fuzz-build wineprefix
	@$(MAKE) --no-print-directory test-native
	@$(MAKE) --no-print-directory -j2 -Otarget test-windows test-fuzz
	@bash scripts/check-format.sh

fuzz: fuzz-build
	@bash scripts/run-fuzzers.sh build/fuzz $(FUZZ_SECONDS)

bench: deps build/bench/CMakeCache.txt
	MAKEFLAGS= cmake --build build/bench -j $(JOBS)
	@bash scripts/run-benchmarks.sh build/bench

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	-$(WINE_RUN) --server -k 2>/dev/null
	-QUILLON_WINEPREFIX=$(CURDIR)/$(WIN)/run-wineprefix $(WINE_RUN) --server -k 2>/dev/null
	rm -rf build
