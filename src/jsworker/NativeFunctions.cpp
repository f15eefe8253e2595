#include "jsworker/NativeFunctions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <sys/random.h>

#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/uloc.h>

#include "jsworker/EngineText.h"

namespace zarvy {
namespace {

// The kernel's randomness, as the standard library's distributions want it.
struct KernelRandom {
  using result_type = std::uint64_t;  // NOLINT(readability-identifier-naming): the library's name
  static constexpr result_type min() { return 0; }
  static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }
  result_type operator()() {
    result_type bits = 0;
    while (getrandom(&bits, sizeof(bits), 0) != sizeof(bits)) {
    }
    return bits;
  }
};

JSValueRef stringValue(JSContextRef context, std::u16string_view units) {
  return JSValueMakeString(context, engineText(units).get());
}

// The number without its fraction; what is no number counts as 0, and what is beyond the integers
// that a script can tell apart counts as the last of them.
std::int64_t integerArgument(JSContextRef context, std::size_t index, std::size_t count,
                             const JSValueRef arguments[], JSValueRef* exception) {
  constexpr double last = 9007199254740991;
  const double number = index < count ? JSValueToNumber(context, arguments[index], exception) : 0;
  return std::isnan(number) ? 0 : static_cast<std::int64_t>(std::clamp(number, -last, last));
}

// The present date and time in the language of the process and the zone of the engine. Empty where
// ICU has no words for it.
std::u16string dateText(UDateFormatStyle date, UDateFormatStyle time) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::LocalUDateFormatPointer format(
      udat_open(time, date, nullptr, nullptr, 0, nullptr, 0, &status));
  if (U_FAILURE(status)) return {};
  std::u16string text(256, u'\0');  // no locale's styles come near it
  const int32_t length = udat_format(format.getAlias(), ucal_getNow(), text.data(),
                                     static_cast<int32_t>(text.size()), nullptr, &status);
  if (U_FAILURE(status)) return {};
  text.resize(static_cast<std::size_t>(length));
  return text;
}

JSValueRef now(JSContextRef context, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[],
               JSValueRef*) {
  return stringValue(context, dateText(UDAT_MEDIUM, UDAT_SHORT));
}

JSValueRef today(JSContextRef context, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[],
                 JSValueRef*) {
  return stringValue(context, dateText(UDAT_MEDIUM, UDAT_NONE));
}

JSValueRef time(JSContextRef context, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[],
                JSValueRef*) {
  return stringValue(context, dateText(UDAT_NONE, UDAT_SHORT));
}

JSValueRef random(JSContextRef context, JSObjectRef, JSObjectRef, std::size_t count,
                  const JSValueRef arguments[], JSValueRef* exception) {
  const std::int64_t least = integerArgument(context, 0, count, arguments, exception);
  if (*exception) return nullptr;
  const std::int64_t most = integerArgument(context, 1, count, arguments, exception);
  if (*exception) return nullptr;
  KernelRandom source;
  const std::int64_t drawn =
      most > least ? std::uniform_int_distribution<std::int64_t>(least, most)(source) : least;
  return JSValueMakeNumber(context, static_cast<double>(drawn));
}

// Version 4, variant 1.
JSValueRef uuid(JSContextRef context, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[],
                JSValueRef*) {
  KernelRandom source;
  const std::array<std::uint64_t, 2> halves = {
      (source() & 0xFFFF'FFFF'FFFF'0FFF) | 0x0000'0000'0000'4000,
      (source() & 0x3FFF'FFFF'FFFF'FFFF) | 0x8000'0000'0000'0000};
  std::u16string text;
  for (const std::uint64_t half : halves) {
    for (int shift = 60; shift >= 0; shift -= 4) {
      text += u"0123456789ABCDEF"[(half >> shift) & 0xF];
    }
  }
  for (const std::size_t dash : {20U, 16U, 12U, 8U}) text.insert(dash, 1, u'-');
  return stringValue(context, text);
}

struct NativeFunction {
  const char* name;
  JSObjectCallAsFunctionCallback call;
};

constexpr NativeFunction nativeFunctions[] = {
    {"now", now}, {"today", today}, {"time", time}, {"random", random}, {"uuid", uuid}};

}  // namespace

void setLanguage(const char* locale) {
  UErrorCode status = U_ZERO_ERROR;
  if (*locale != '\0') uloc_setDefault(locale, &status);
  // Otherwise ICU would look for the machine's zone.
  ucal_setDefaultTimeZone(u"UTC", &status);
  (void)dateText(UDAT_MEDIUM, UDAT_SHORT);
}

void bindNativeFunctions(JSGlobalContextRef context) {
  JSObjectRef global = JSContextGetGlobalObject(context);
  for (const NativeFunction& native : nativeFunctions) {
    const EngineText name(JSStringCreateWithUTF8CString(native.name));
    JSObjectRef function = JSObjectMakeFunctionWithCallback(context, name.get(), native.call);
    JSObjectSetProperty(context, global, name.get(), function, kJSPropertyAttributeNone, nullptr);
  }
}

}  // namespace zarvy
