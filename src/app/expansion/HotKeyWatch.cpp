#include "app/expansion/HotKeyWatch.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "app/library/AssignIfChanged.h"
#include "app/library/Library.h"
#include "platform/ModifierFlags.h"
#include "platform/VirtualKey.h"

namespace zarvy {

namespace {

constexpr std::array candidates{
    HotKey{virtualkey::space, modifier::control | modifier::option},
    HotKey{virtualkey::space, modifier::command},
    HotKey{virtualkey::space, modifier::control | modifier::shift},
};

}  // namespace

HotKeyWatch::HotKeyWatch(const Library& library, const HotKeys& hotKeys)
    : m_library(library), m_hotKeys(hotKeys) {}

bool HotKeyWatch::look() {
  if (assignIfChanged(m_takenHotKey, found())) Q_EMIT takenHotKeyChanged();
  return m_takenHotKey.has_value();
}

std::optional<TakenHotKey> HotKeyWatch::found() const {
  const Settings& settings = m_library.settings();
  TakenHotKey taken{.key = {settings.quickSearchKeyCode, settings.quickSearchModifiers},
                    .free = {}};
  if (!m_hotKeys.isTakenByAnother(taken.key)) return std::nullopt;
  std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(taken.free),
               [this](const HotKey& key) { return !m_hotKeys.isTakenByAnother(key); });
  return taken;
}

}  // namespace zarvy
