# The common tasks, thin over CMakePresets.json. The tasks install the Debian packages that they miss.
#
#   make demo         build, convert pictures, show where they are and how fast it was
#   make test         build and run all tests
#   make bench        time every function, next to the other libraries of the field
#   make performance  the same, into docs/performance.md and docs/performance/ (about 10 minutes)
#   make site         the reference as static pages, with the function finder (SITE=out/site)
#   make accuracy     distances of the colour spaces from their definitions
#   make golden       the table of the bytes that every function gives, anew (pxlcc selftest compares with it)
#   make python       build the Python package; make python-test runs its tests
#   make gstreamer    build the GStreamer plugin; make gstreamer-test runs its tests, gstreamer-bench times it
#   make views        write the table of the C++ views anew, after a change of the catalogue
#   make examples     build and run the examples, those with OpenCV and FFmpeg among them
#   make deb          build the Debian packages into build/deb, with their tests, and look at them with lintian
#   make install      build the library and the program and install them (PREFIX=/usr/local, DESTDIR=)
#   make format       format the sources; format-check only tells
#   make clean        remove what these tasks made
#
# PRESET=clang make test: with another preset of CMakePresets.json.

PRESET ?= release
PREFIX ?= /usr/local
DEMO ?= out/demo
SITE ?= out/site
TEST_TIMEOUT ?= 600
JOBS ?= $(shell nproc)
BUILD = build/$(PRESET)

.PHONY: help demo test bench bench-program performance site accuracy golden python python-test gstreamer \
        gstreamer-test gstreamer-bench views examples deb install format format-check clean

help:
	@sed -n '3,/^$$/s/^# \{0,1\}//p' Makefile

demo:
	@scripts/install-packages build
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD) --target pxlcc_tool
	$(BUILD)/tools/pxlcc demo $(DEMO)
	@echo
	@echo "Open $(DEMO)/contact-sheet.png: all conversions at a glance. Beside it, for each conversion NAME of the table:"
	@echo "NAME.png (there and back), NAME-between.png (the samples in between), NAME-difference-*.png (amplified)."
	@echo "hue-wheels.png, ditherings.png, demosaic-zoom.png and chroma-rows.png show what no table tells."

test:
	@scripts/install-packages build
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD)
	ctest --test-dir $(BUILD) --parallel $(JOBS) --output-on-failure --no-tests=error --timeout $(TEST_TIMEOUT)

bench bench-program performance: PRESET = bench
bench-program:
	@scripts/install-packages build bench
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD) --target pxlcc_bench

bench: bench-program
	$(BUILD)/bench/pxlcc_bench $(BENCH_ARGS)

performance: bench-program
	@scripts/install-packages pages
	$(BUILD)/bench/pxlcc_bench --json $(BUILD)/measurements.json $(BENCH_ARGS) >$(BUILD)/measurements.md
	mv $(BUILD)/measurements.json docs/performance/
	python3 site/performance.py

site:
	@scripts/install-packages build pages
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD) --target pxlcc_tool
	$(BUILD)/tools/pxlcc list --json >$(BUILD)/catalogue.json
	python3 site/build.py $(BUILD)/catalogue.json $(SITE)
	@echo "Open $(SITE)/index.html"

accuracy:
	@scripts/install-packages build
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD) --target pxlcc_tool
	$(BUILD)/tools/pxlcc accuracy

# Twice: for the estimate of the reciprocal of this processor and for that of the emulator.
golden:
	@scripts/install-packages build check
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD) --target pxlcc_tool
	$(BUILD)/tools/pxlcc selftest --write tools/golden.def
	qemu-x86_64 -cpu Nehalem $(BUILD)/tools/pxlcc selftest --write tools/golden.def

# The package pxlcc for Debian's interpreter, ready to use in $(BUILD)/python.
python:
	@scripts/install-packages build python
	cmake --preset $(PRESET) -DPXLCC_BUILD_PYTHON=ON >/dev/null
	cmake --build $(BUILD) --target pxlcc_python_package
	@echo
	@echo "To use it: PYTHONPATH=$(CURDIR)/$(BUILD)/python /usr/bin/python3"

python-test: python
	PYTHONPATH=$(CURDIR)/$(BUILD)/python /usr/bin/python3 -m pytest -q -p no:cacheprovider bindings/python/tests

# The plugin with the element pxlccconvert, ready to use in $(BUILD)/gstreamer.
gstreamer:
	@scripts/install-packages build gstreamer
	cmake --preset $(PRESET) -DPXLCC_BUILD_GSTREAMER=ON >/dev/null
	cmake --build $(BUILD) --target pxlcc_gstreamer
	@echo
	@echo "To use it: export GST_PLUGIN_PATH=$(CURDIR)/$(BUILD)/gstreamer; then gst-inspect-1.0 pxlccconvert"

gstreamer-test: gstreamer
	cmake --build $(BUILD) --target pxlcc_gstreamer_tests
	ctest --test-dir $(BUILD)/bindings/gstreamer --output-on-failure --no-tests=error --timeout $(TEST_TIMEOUT)

gstreamer-bench: gstreamer
	cmake --build $(BUILD) --target pxlcc_gstreamer_bench
	$(BUILD)/bindings/gstreamer/bench/pxlcc_gstreamer_bench $(BENCH_ARGS)

views:
	@scripts/install-packages build
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD) --target pxlcc_views_table
	$(BUILD)/catalog/pxlcc_views_table >build/pxlcc_table.hpp
	mv build/pxlcc_table.hpp include/pxlcc/pxlcc_table.hpp

examples: PRESET = examples
examples:
	@scripts/install-packages build examples
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD)
	ctest --test-dir $(BUILD) --output-on-failure --no-tests=error --timeout $(TEST_TIMEOUT)

# The program and the library alone, without what only the tests need.
install: PRESET = install
install:
	@scripts/install-packages build
	cmake --preset $(PRESET) -DCMAKE_INSTALL_PREFIX=$(PREFIX) >/dev/null
	cmake --build $(BUILD)
	DESTDIR=$(DESTDIR) cmake --install $(BUILD)

deb:
	@scripts/install-packages build pages python gstreamer deb
	scripts/make-deb

format:
	scripts/format

format-check:
	scripts/format --check

clean:
	rm -rf build out
