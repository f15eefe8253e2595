#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/placeholders/DateFormatters.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(DateFormatters, AreMadeOnceAndKept) {
  DateFormatters formatters({"en_US"});
  EXPECT_EQ(&formatters.dateFormatter(u"yyyy"_s), &formatters.dateFormatter(u"yyyy"_s));
  EXPECT_NE(&formatters.dateFormatter(u"yyyy"_s), &formatters.dateFormatter(u"yyy"_s));
  EXPECT_EQ(&formatters.timeFormatter(), &formatters.timeFormatter());
}

TEST(DateFormattersThreads, WriteTheSameFromEveryThread) {
  const EnvironmentVariable zone("TZ", "UTC");
  DateFormatters formatters({"en_US"});
  const QDateTime date = QDateTime::fromSecsSinceEpoch(1769000640, utcZone);
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int number = 0; number < 200; ++number) {
        // The formats come up in every thread at about the same time, and are then shared.
        const QString quoted = QString::number(number / 10);
        const DateFormatter& custom = formatters.dateFormatter(u"yyyy-MM-dd '"_s + quoted + u'\'');
        if (custom.format(date) != u"2026-01-21 "_s + quoted) ++wrong;
        if (formatters.shortDateFormatter().format(date) != u"1/21/26"_s) ++wrong;
        if (formatters.longDateFormatter().format(date) != u"January 21, 2026"_s) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace zarvy
