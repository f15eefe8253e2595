#include "e2e/harness/TestSnippet.h"

namespace zarvy::e2e {

namespace {

std::string hexadecimal(quint64 number, int digits) {
  return QString::number(number, 16).rightJustified(digits, u'0').toUpper().toStdString();
}

std::string jsonString(const QString& text) {
  std::string json = "\"";
  for (const QChar unit : text) {
    const char16_t code = unit.unicode();
    if (code < 0x20 || code > 0x7E || code == u'"' || code == u'\\') {
      json += "\\u" + hexadecimal(code, 4);
    } else {
      json += static_cast<char>(code);
    }
  }
  return json + "\"";
}

std::string recordOf(const TestSnippet& snippet, quint64 number) {
  const std::string instant = "\"2026-01-21T09:30:00Z\"";
  return "  {\n    \"createdAt\" : " + instant + ",\n    \"id\" : \"7E57AB1E-0000-4000-8000-" +
         hexadecimal(number, 12) +
         "\",\n    \"isRegexTrigger\" : false,\n    \"modifiedAt\" : " + instant +
         ",\n    \"replacement\" : " + jsonString(snippet.replacement) +
         ",\n    \"title\" : \"Snippet " + std::to_string(number) +
         "\",\n    \"trigger\" : " + jsonString(snippet.trigger) + "\n  }";
}

}  // namespace

std::string snippetDocument(const std::vector<TestSnippet>& snippets) {
  std::string document = "[";
  quint64 number = 0;
  for (const TestSnippet& snippet : snippets) {
    document += (number == 0 ? "\n" : ",\n") + recordOf(snippet, number + 1);
    ++number;
  }
  return document + "\n]";
}

}  // namespace zarvy::e2e
