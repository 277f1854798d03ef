# The engine built without CMake, as engine-testing frameworks build it:
#   make -j EXE=<output path> CXX=<compiler>
# This build starts as `korvane --uci` does (the standard UCI mode: LF line ends, the Hash and
# Threads options a framework sets), since a framework starts the engine by its bare path and
# can pass no argument; `<exe> bench` is the same in every build. The release comes from CMakeLists.txt, the
# commit from git when the tree is a checkout. `make clean` removes the objects.
CXX ?= g++
EXE ?= korvane
ifeq ($(CXX),cc)
  CXX := g++
endif

VERSION := $(shell awk '/^project.korvane VERSION/ { print $$3 }' CMakeLists.txt)
COMMIT := $(shell git rev-parse --short HEAD 2>/dev/null)
ifeq ($(OS),Windows_NT)
  PLATFORM := windows
  LDFLAGS += -static
else
  PLATFORM := posix
endif
# The population count instruction where the compiler has it for the target (x86-64); other
# processors (ARM) count bits with their own instructions.
POPCNT := $(shell $(CXX) -mpopcnt -x c++ -c -o /dev/null /dev/null 2>/dev/null && echo -mpopcnt)

CXXFLAGS ?= -O3
CXXFLAGS += -std=c++20 -DNDEBUG -fno-exceptions -Wall -Wextra $(POPCNT) -Isrc \
  -DKORVANE_RELEASE='"$(VERSION)"' -DKORVANE_COMMIT='"$(COMMIT)"' -DKORVANE_START_MODE=2

SOURCES := $(filter-out src/platform/posix.cpp src/platform/windows.cpp src/platform/browser.cpp, $(wildcard src/*/*.cpp)) \
  src/platform/$(PLATFORM).cpp
OBJDIR := build-make/$(notdir $(firstword $(CXX)))
OBJECTS := $(SOURCES:src/%.cpp=$(OBJDIR)/%.o)

$(EXE): $(OBJECTS)
	$(CXX) $(CXXFLAGS) -o $@ $(OBJECTS) $(LDFLAGS)

# The compiler is asked for its version first, so an unknown one stops the build at once with its
# own message instead of once for every file.
$(OBJDIR)/.compiler:
	$(CXX) --version
	@mkdir -p $(OBJDIR) && touch $@

$(OBJDIR)/%.o: src/%.cpp | $(OBJDIR)/.compiler
	@mkdir -p $(dir $@)
	$(CXX) $(CXXFLAGS) -MMD -MP -c $< -o $@

clean:
	rm -rf build-make

.PHONY: clean
-include $(OBJECTS:.o=.d)
