#include "e2e/scenarios/ScenarioTexts.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

// Cut to `length`, which is counted in UTF-16 units: for texts without surrogates only.
QString repeatedTo(qsizetype length, const QString& piece) {
  QString text;
  while (text.size() < length) text += piece;
  return text.left(length - 1) + u'.';
}

}  // namespace

QString textOfTwelveScripts() {
  return
      // Latin beyond ASCII
      u"ÀÇÉÑÖŘŠŽßæøåłńőűąęīūğışțđħŋ "
      // Greek, Cyrillic, Armenian, Georgian
      u"ΑΒΓΔΕΖΗΘΛΞΠΣΦΨΩαβγδεζηθλξω "
      u"БГДЖИЙЛПФЦЧШЩЪЫЭЮЯбджзйлцчщъыэюяїґў "
      u"ԱԲԳԴԵԶԷԸԹԺաբգդեզէըթժիլխծկ "
      u"აბგდევზთიკლმნოპჟრსტუფქღყშ "
      // Hebrew and Arabic, which run from right to left
      u"אבגדהוזחטיכלמנסעפצקרשתםןף "
      u"ابتثجحخدذرزسشصضطظعغفقكلمنهو "
      // Devanagari and Thai, with vowel signs that combine
      u"अआइईउऊएऐओऔकखगघचछजझटठतथदधनपकिखुगेघ् "
      u"กขคฆงจฉชซฌญฎฏฐฑฒณดตถทธนบปที่นี้ "
      // Hangul, Kana, Han
      u"가나다라마바사아자차카타파하고노도로 "
      u"あいうえおかきくけこアイウエオカキクケコ "
      u"一丁七三上下不世中主久之九事二五井人今日本語漢字 "
      // letters with combining marks that have no precomposed form, and some that have one
      u"x\u0301 q\u0303 m\u0304 e\u0301 o\u0308\u0304 n\u0330 "
      // emoji: beyond the basic plane, with a variation selector, skin tone, joiners, flags, keycap
      u"😀🚀🎉💡🔥 ❤\uFE0F ✌🏽 👩\u200D💻 👨\u200D👩\u200D👧\u200D👦 "
      u"🏳\uFE0F\u200D🌈 "
      u"🇩🇪🇯🇵🇫🇷 "
      u"1\uFE0F\u20E3 "
      // marks of everyday writing
      u"„“”‚‘’«»…–—•€£¥©®™°±×÷≠≤≥∞√→←↑↓✓"_s;
}

QString plainText(qsizetype length) {
  return repeatedTo(
      length,
      u"Thank you for your e-mail of 21/01/2026; I'll answer it by 5:30 PM. (Order #4711: 12 x "
      u"$3.99 "
      u"+ 7% = \"paid\".) if (a[i] != b{j}) { return x ^ y | ~z & 0xFF; } C:\\TMP\\*.txt `ls` "
      u"<Tab> "
      u"user_name@example.org? YES, Mississippi BOOKKEEPER aaa bbb AaBbCc 0011223344 !! ;; ,, .. "_s);
}

QString longPlainText() {
  return plainText(2000);
}

QString longForeignText() {
  return repeatedTo(
      2000,
      u"ΑλφαΒήταΓάμμαΔέλτα здравствуйте ŁódźŘíčanyŠťastný שלוםעולם ภาษาไทย 日本語漢字かな "
      u"äöüßéèçñ “quoted” – plain words between – ©®™ "_s);
}

QString textOfTwoHundredAndForty() {
  constexpr int count = 240;
  constexpr int stride = 7;  // neighbours in the text are none in the alphabet
  QString text;
  for (int index = 0; text.size() < 1000; ++index) {
    if (text.size() % 9 == 8) text += u' ';
    const int place = index * stride % count;
    // Armenian capitals, Georgian letters, and Han characters in the order of their code.
    const int first = place < 38 ? 0x531 : place < 71 ? 0x10D0 - 38 : 0x4E00 - 71;
    text += QChar(first + place);
  }
  return text.left(999) + u'.';
}

}  // namespace zarvy::e2e
