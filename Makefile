# Quillon's commands. `make run` and `make test` work on a fresh Debian machine: each installs what is
# missing from Debian's packages first.
SHELL := /bin/bash
.SHELLFLAGS := -eu -o pipefail -c
JOBS ?= $(shell nproc)
ARGS ?=
FUZZ_SECONDS ?= 30

ROOT := $(CURDIR)
WIN := build/windows
NATIVE := build/native
export WINEPREFIX := $(ROOT)/$(WIN)/wineprefix
export WINEDEBUG := -all
export WINEDLLOVERRIDES := mscoree,mshtml=
WINESERVER := $(firstword $(wildcard /usr/lib/wine/wineserver64 /usr/lib/wine/wineserver) wineserver)
XVFB := xvfb-run -a -s "-screen 0 1280x1024x24"
# Quillon runs against a local product-attribute server that knows its own version, stopped when it exits.
PRODUCT_SERVER := python3 tests/server/productServer.py --table $(WIN)/run-products.txt --wrap

.PHONY: all run test dist deps native windows wineprefix test-native test-windows test-fuzz fuzz bench format clean

all: native windows

deps:
	@bash scripts/install-deps.sh

native: deps
	cmake -S . -B $(NATIVE) -DCMAKE_BUILD_TYPE=Debug > /dev/null
	cmake --build $(NATIVE) -j $(JOBS)

windows: deps
	cmake -S . -B $(WIN) -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release > /dev/null
	cmake --build $(WIN) -j $(JOBS)

# The signed MSI, the portable zip and their SHA256SUMS, beside the tree in build/windows/dist.
dist: windows
	cmake --build $(WIN) --target dist

# A prefix of the build's own, made once: the first start of Wine takes 10-20 s.
wineprefix: $(WIN)/wineprefix/.ready
$(WIN)/wineprefix/.ready:
	mkdir -p $(WIN)/wineprefix
	$(XVFB) bash -c '/usr/lib/wine/wine64 wineboot -i >/dev/null 2>&1; $(WINESERVER) -w'
	touch $@

run: windows wineprefix
	@if [ -n "$${DISPLAY:-}" ]; then \
	    $(PRODUCT_SERVER) cmake/wine-run.sh $(WIN)/dist/Quillon/sys/exec/quillon.exe $(ARGS); \
	else \
	    $(XVFB) $(PRODUCT_SERVER) cmake/wine-run.sh $(WIN)/dist/Quillon/sys/exec/quillon.exe $(ARGS); \
	fi

test-native: native
	ctest --test-dir $(NATIVE) -j $(JOBS) --output-on-failure

test-windows: windows wineprefix
	$(XVFB) bash -c 'ctest --test-dir $(WIN) --output-on-failure; rc=$$?; $(WINESERVER) -k || true; exit $$rc'

test: test-native test-windows test-fuzz
	@bash scripts/check-format.sh

# Every fuzzer still builds and survives a short run from its seeds.
test-fuzz:
	$(MAKE) --no-print-directory fuzz FUZZ_SECONDS=10

fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B build/fuzz -DQUILLON_FUZZ=ON > /dev/null
	cmake --build build/fuzz -j $(JOBS)
	@bash scripts/run-fuzzers.sh build/fuzz $(FUZZ_SECONDS)

bench: deps
	cmake -S . -B build/bench -DQUILLON_BENCH=ON > /dev/null
	cmake --build build/bench -j $(JOBS)
	@bash scripts/run-benchmarks.sh build/bench

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	-WINEPREFIX=$(WINEPREFIX) $(WINESERVER) -k 2>/dev/null
	rm -rf build
