# The face of the project. `make help` lists what there is.
#
# Every target installs what it lacks first (tools/deps.sh, Debian packages; silent when nothing is missing).

.DEFAULT_GOAL := help
.PHONY: help deps run check test windows test-windows bench gallery fuzz lint format ci clean

SHELL := /bin/bash
JOBS ?= $(shell nproc)
HOST := build/host
export CCACHE_DIR ?= $(HOME)/.cache/ccache
# One cache for every checkout: paths below this folder count as relative, debug information does not pin them.
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := 1

configure = cmake --preset $(1) >build/$(1).log 2>&1 || { cat build/$(1).log; exit 1; }
# Ninja's own progress is for terminals; elsewhere the last line says enough.
build = mkdir -p build && $(call configure,$(1)) && cmake --build $(2) -j $(JOBS) $(3)

help:  ## this list
	@grep -E '^[a-z-]+:.*##' $(MAKEFILE_LIST) | sed -E 's/^([a-z-]+):.*## ?/  make \1\t/' | expand -t 22

deps:  ## install the packages that building and running need
	@tools/deps.sh build

run: deps host-release windows-i686  ## build, pack, install the sample product on a fresh machine, show what it did
	@tools/deps.sh run
	@tools/run.sh $(HOST)
	@[ -z "$$DISPLAY" ] || { echo; echo "With its window:"; tools/run_window.sh $(HOST); }

.PHONY: run-window
run-window: deps host-release  ## the setup's window on a fresh machine; without a display a walk through it: build/walk
	@tools/deps.sh gallery
	@tools/run_window.sh $(HOST)

.PHONY: host-release windows-i686 windows-x64
host-release: deps
	@$(call build,host-release,$(HOST),--target setup vantakit regsvr32)

# The setups are packed by the Linux vantakit.
windows-i686 windows-x64: deps host-release
	@$(call build,$@,build/$@,)

check: deps  ## the usual loop: debug build and every test, without sanitizers
	@tools/deps.sh test
	@$(call build,host-debug,build/host-debug,)
	@ctest --test-dir build/host-debug --output-on-failure -j $(JOBS)

test: deps  ## every test under ASan+UBSan, threads under TSan, whole installations, a short run of each fuzzer
	@tools/deps.sh test
	@tools/test.sh $(JOBS)

windows: windows-i686 windows-x64  ## the Windows executables, i686 (shipped) and x86_64
	@ls -l build/windows-i686/VantaPictorSetup.exe build/windows-x64/VantaPictorSetup.exe

test-windows: windows-x64  ## the x86_64 executable under Wine, compared with what the Linux build leaves
	@cmake --build $(HOST) -j $(JOBS) --target draw_pages compare_pictures
	@tests/windows/run.sh

gallery: host-release  ## every window, page and state of the skin at four scales: build/gallery
	@tools/deps.sh gallery
	@python3 tools/gallery.py --vantakit $(HOST)/vantakit --out build/gallery

BENCHES := extract_bench markup_bench layout_bench layout_peer paint_bench paint_peer window_bench
# Configured once more: the peers are looked for then, and may have been installed just now.
bench: deps host-release windows-i686  ## speed and size, each beside its peer (ONLY=layout: one part of it)
	@tools/deps.sh bench
	@$(call build,host-release,$(HOST),--target $(BENCHES))
	@python3 tests/bench/run.py --build $(HOST) $(addprefix --only ,$(ONLY))

fuzz: deps  ## each fuzzer for FUZZ_SECONDS (60) seconds
	@tools/deps.sh test
	@tools/fuzz.sh $${FUZZ_SECONDS:-60}

lint: deps windows-i686  ## layering, forbidden calls, imports of the executables, formatting
	@tools/deps.sh lint
	@python3 tools/lint.py

format: deps  ## clang-format everything in place
	@tools/deps.sh lint
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

ci:  ## what the continuous integration runs
	@.ci/run

clean:  ## remove everything that was built
	@rm -rf build
