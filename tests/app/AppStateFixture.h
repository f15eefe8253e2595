#pragma once

#include <gtest/gtest.h>

#include "app/ExpansionHarness.h"

namespace zarvy {

// AppState with everything that it stands on, ready for a test to give it a library.
class AppStateFixture : public testing::Test {
 protected:
  // Starts expansion with one snippet, and forgets what the start wrote down.
  void startWith(const Snippet& snippet) {
    m_harness.load({{snippet}, {}, {}, {}});
    m_harness.finish();
    (void)m_harness.takeJournal();
  }

  void startWith(const QString& trigger, const QString& replacement) {
    startWith(m_harness.snippet(trigger, replacement));
  }

  [[nodiscard]] AppState& state() { return *m_harness.state; }

  // Counts the calls of a signal from now on.
  template <typename Object, typename Signal>
  [[nodiscard]] std::shared_ptr<int> count(Object& object, Signal signal) {
    auto calls = std::make_shared<int>(0);
    QObject::connect(&object, signal, &state(), [calls] { ++*calls; });
    return calls;
  }

  ExpansionHarness m_harness;
};

}  // namespace zarvy
