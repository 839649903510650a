#pragma once
// Runs a test once for every floppy format.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "floppy/Geometry.h"

namespace floppy::testing {

/// The types of all formats.
inline std::vector<std::string> AllTypes() {
    std::vector<std::string> types;
    for (const Geometry& geometry : AllGeometries()) types.emplace_back(geometry.Type);
    return types;
}

}  // namespace floppy::testing

/// The suite's parameter is the type, a std::string.
#define VELBOOTER_EVERY_FORMAT(suite)                                                           \
    INSTANTIATE_TEST_SUITE_P(Floppy, suite, ::testing::ValuesIn(::floppy::testing::AllTypes()), \
                             [](const auto& info) { return info.param; })
