#pragma once

#include <QStringView>

namespace zarvy {

// How each kind of placeholder is written, for all that reads or composes them.

// What it begins with; an argument and "}}" follow.
namespace opener {

inline constexpr QStringView textField = u"{{field:";
inline constexpr QStringView textArea = u"{{textarea:";
inline constexpr QStringView dropdown = u"{{dropdown:";
inline constexpr QStringView section = u"{{?:";
inline constexpr QStringView snippet = u"{{snippet:";
inline constexpr QStringView variable = u"{{#";
inline constexpr QStringView date = u"{{date:";
inline constexpr QStringView time = u"{{time:";
inline constexpr QStringView uppercase = u"{{uppercase:";
inline constexpr QStringView lowercase = u"{{lowercase:";
inline constexpr QStringView titlecase = u"{{titlecase:";
inline constexpr QStringView counter = u"{{counter:";
inline constexpr QStringView script = u"{{js:";
inline constexpr QStringView command = u"{{shell:";

}  // namespace opener

// The whole of it.
namespace literal {

inline constexpr QStringView sectionEnd = u"{{/?}}";
inline constexpr QStringView shortDate = u"{{date:short}}";
inline constexpr QStringView mediumDate = u"{{date:medium}}";
inline constexpr QStringView longDate = u"{{date:long}}";
inline constexpr QStringView time = u"{{time}}";
inline constexpr QStringView clipboard = u"{{clipboard}}";
inline constexpr QStringView cursor = u"{{cursor}}";

}  // namespace literal

}  // namespace zarvy
