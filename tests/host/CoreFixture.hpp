// The fixture of the session-core tests: a fresh session for each test, part files written to
// a folder of the test's own, and a small mould to work on.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include "support/Posix.hpp"

#include <NXOpen/Body.hxx>
#include <NXOpen/Part.hxx>

#include "Driver.hpp"

// A small mould (UTF-8): part attributes of three types, layers 20 visible and 30 invisible,
// and five bodies. 1001 and 1003 are the same screw (1003 moved and turned), 1002 a longer
// screw, 1004 a plate, 1005 a blanked pin on the invisible layer.
inline const char* const kSmallMould = u8R"({
  "format": "vornadel-part/1",
  "leaf": "A100",
  "attributes": {
    "订单编号": "SO-1",
    "版本": {"integer": 3},
    "重量": {"real": 12.5}
  },
  "work_layer": 1,
  "layer_states": {
    "20": "visible",
    "30": "invisible"
  },
  "bodies": [
    {
      "tag": 1001,
      "layer": 10,
      "color": 6,
      "blanked": false,
      "attributes": {
        "转图标识": "Y",
        "名称": "内六角螺钉",
        "数量": "4"
      },
      "solid": {"shape": "stack", "parts": [{"d": 10, "l": 6}, {"d": 6, "l": 20}]},
      "at": [0, 0, 0],
      "rotate": [0, 0, 0]
    },
    {
      "tag": 1002,
      "layer": 10,
      "color": 6,
      "blanked": false,
      "attributes": {
        "转图标识": "Y"
      },
      "solid": {"shape": "stack", "parts": [{"d": 10, "l": 6}, {"d": 6, "l": 25}]},
      "at": [50, 0, 0],
      "rotate": [0, 0, 0]
    },
    {
      "tag": 1003,
      "layer": 20,
      "color": 186,
      "blanked": false,
      "attributes": {},
      "solid": {"shape": "stack", "parts": [{"d": 10, "l": 6}, {"d": 6, "l": 20}]},
      "at": [120, -35.5, 12],
      "rotate": [90, 30, 45]
    },
    {
      "tag": 1004,
      "layer": 1,
      "color": 87,
      "blanked": false,
      "attributes": {},
      "solid": {"shape": "box", "x": 200, "y": 150, "z": 25},
      "at": [0, 0, -25],
      "rotate": [0, 0, 0]
    },
    {
      "tag": 1005,
      "layer": 30,
      "color": 6,
      "blanked": true,
      "attributes": {
        "转图标识": "Y"
      },
      "solid": {"shape": "cylinder", "d": 8, "l": 40},
      "at": [10, 10, 0],
      "rotate": [0, 90, 0]
    }
  ]
}
)";

class HostCoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        host::ResetSession();
        static int counter = 0;
        folder_ = std::filesystem::temp_directory_path() /
                  ("vornadel-core-" + std::to_string(getpid()) + "-" + std::to_string(++counter));
        std::filesystem::create_directories(folder_);
    }

    void TearDown() override {
        host::ResetSession();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    // Writes bytes to a file of the test's folder; returns its path.
    std::string WriteFile(const std::string& name, const std::string& bytes) {
        std::string path = (folder_ / name).string();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    static std::string ReadFile(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    // Writes the part file and loads it as the work part.
    NXOpen::Part* LoadPart(const std::string& utf8Json, const std::string& name = "A100.part.json") {
        return host::LoadWorkPart(WriteFile(name, utf8Json));
    }

    NXOpen::Part* LoadSmallMould() { return LoadPart(kSmallMould); }

    static NXOpen::Body* Body(unsigned int tag) { return host::FindBody(tag); }

    std::filesystem::path folder_;
};
