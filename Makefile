# The two commands: `make demo` (the gallery) and `make test` (every test, native and under Wine).
# Both install whatever is missing first. Builds use two jobs, as the machine has two cores.
JOBS ?= 2
SHELL := /bin/bash

.PHONY: all deps linux mingw demo test test-native test-wine asan bench fuzz clean

all: linux mingw

deps:
	@bash scripts/install-deps

build/linux/CMakeCache.txt:
	cmake --preset linux >/dev/null
build/mingw/CMakeCache.txt:
	cmake --preset mingw >/dev/null

linux: deps build/linux/CMakeCache.txt
	cmake --build build/linux -j$(JOBS)

mingw: deps build/mingw/CMakeCache.txt
	cmake --build build/mingw -j$(JOBS)

# The fuzz targets are built and each run for a few seconds first, so that none rots unseen; the
# closing summary of the test programs stays the last line.
test: linux mingw
	@status=0; bash scripts/fuzz 5 || status=1; bash scripts/run-tests || status=1; exit $$status

test-native: linux
	@bash scripts/run-tests native

test-wine: mingw
	@bash scripts/run-tests wine

demo: linux mingw
	@bash scripts/run-demo

asan: deps
	cmake --preset linux-asan >/dev/null
	cmake --build build/linux-asan -j$(JOBS)
	ctest --test-dir build/linux-asan --output-on-failure

bench: linux
	@bash scripts/run-bench

fuzz: deps
	@bash scripts/fuzz

clean:
	rm -rf build out
