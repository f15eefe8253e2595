#pragma once

#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "e2e/harness/Stage.h"

namespace zarvy::e2e {

// Where a test takes place: above which application, under which window manager.
using Place = std::tuple<WindowManagerKind, TargetKind>;

[[nodiscard]] inline std::string nameOfPlace(const testing::TestParamInfo<Place>& instance) {
  return nameOf(std::get<WindowManagerKind>(instance.param)) + "_" +
         nameOf(std::get<TargetKind>(instance.param));
}

[[nodiscard]] inline std::string nameOfWindowManager(
    const testing::TestParamInfo<WindowManagerKind>& instance) {
  return nameOf(instance.param);
}

}  // namespace zarvy::e2e
