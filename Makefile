# The user's commands. Everything they need is installed first, by tools/install-packages.
#   make          the same as make build
#   make build    build/release/orbelmenu and its companion
#   make run      build and start the menu (with no display: an embedded one, with pictures of every step)
#   make test     build and run every test
#   make core     build and test the portable core alone, without Qt and X11
#   make headers  compile each header on its own
#   make bench    the table of speeds
#   make install  PREFIX=/usr/local DESTDIR=
#   make format   clang-format over the sources (make format-check: only look)

PREFIX ?= /usr/local
DESTDIR ?=
# One job a core; memory is no limit for this project.
JOBS ?= $(shell nproc)

# $(call run_tests,<preset>)
# No test is run a second time but those that tests/retried-tests.txt names, with the reason.
define run_tests
	$(if $(strip $(shell cat tests/retried-tests.txt)),ctest --preset $(1) -L retried --repeat until-pass:3)
	ctest --preset $(1) -j $(JOBS) -LE retried
endef

.DEFAULT_GOAL := build
.PHONY: run test build bench install format format-check tidy asan core headers clean
run: build
	@tools/install-packages run
	@tools/run

build:
	@tools/install-packages build
	cmake --preset release
	cmake --build --preset release -j $(JOBS)

test:
	@tools/install-packages build test
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS)
	$(call run_tests,dev)

asan:
	@tools/install-packages build test
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	$(call run_tests,asan)

core:
	@tools/install-packages core unit
	cmake --preset core
	cmake --build --preset core -j $(JOBS)
	ctest --preset core -j $(JOBS)

headers:
	@tools/install-packages build test
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS) --target all_verify_interface_header_sets

bench:
	@tools/install-packages build test bench
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS)
	@tools/bench

install: build
	DESTDIR="$(DESTDIR)" cmake --install build/release --prefix "$(PREFIX)"

format:
	@tools/install-packages format
	@git ls-files '*.cpp' '*.h' | xargs clang-format-14 -i

format-check:
	@tools/install-packages format
	@git ls-files '*.cpp' '*.h' | xargs clang-format-14 --dry-run -Werror

tidy:
	@tools/install-packages build test tidy
	@tools/tidy

clean:
	rm -rf build
