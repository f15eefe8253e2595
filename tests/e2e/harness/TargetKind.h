#pragma once

#include <memory>
#include <string>
#include <vector>

#include "e2e/harness/TargetApplication.h"

namespace zarvy::e2e {

enum class TargetKind {
  xterm,
  mousepad,
  featherpad,
  qt6,
  chromium,
  gtk4,
  kwrite,
  firefox,
  tk,
  swing,
  gvim,
  emacs,
  sakura,
  kitty,
  xim
};

[[nodiscard]] const std::vector<TargetKind>& allTargetKinds();

// For reports and filters.
[[nodiscard]] std::string nameOf(TargetKind kind);

[[nodiscard]] std::unique_ptr<TargetApplication> makeTarget(TargetKind kind, TargetSetting setting);

}  // namespace zarvy::e2e
