#include "core/model/FirstRunContent.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QUuid sampleFolderID(int lastDigit) {
  return QUuid(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, static_cast<uchar>(lastDigit));
}

QList<Folder> sampleFolders() {
  return {{sampleFolderID(1), u"Email"_s, FolderColor::blue, 0},
          {sampleFolderID(2), u"Code"_s, FolderColor::green, 1},
          {sampleFolderID(3), u"Personal"_s, FolderColor::purple, 2}};
}

QList<Snippet> sampleSnippets(const Clock& clock) {
  const QUuid email = sampleFolderID(1);
  const QUuid code = sampleFolderID(2);
  const QUuid personal = sampleFolderID(3);
  return {
      Snippet::create(u"Email Signature"_s, u";sig"_s,
                      u"Best regards,\n{{field:Your Name}}\n{{field:Your Title}}"_s, clock, email),
      Snippet::create(u"Quick Thank You"_s, u";ty"_s,
                      u"Thank you for your email. I'll get back to you shortly."_s, clock, email),
      Snippet::create(u"Meeting Request"_s, u";meet"_s,
                      u"Hi {{field:Name}},\n\nI'd like to schedule a meeting to discuss "
                      "{{field:Topic}}.\n\nWould "
                      "{{dropdown:Day:Monday,Tuesday,Wednesday,Thursday,Friday}} at "
                      "{{dropdown:Time:9:00 AM,10:00 AM,11:00 AM,2:00 PM,3:00 PM}} work for "
                      "you?\n\nBest,"_s,
                      clock, email),
      Snippet::create(u"Swift Function"_s, u";func"_s,
                      u"func {{field:functionName}}({{field:parameters}}) -> "
                      "{{field:ReturnType}} {\n    {{field:// implementation}}\n}"_s,
                      clock, code),
      Snippet::create(u"TODO Comment"_s, u";todo"_s,
                      u"// TODO: {{field:description}} - {{date:short}}"_s, clock, code),
      Snippet::create(u"Guard Statement"_s, u";guard"_s,
                      u"guard let {{field:variable}} = {{field:optional}} else {\n"
                      "    return\n}"_s,
                      clock, code),
      Snippet::create(u"Home Address"_s, u";addr"_s,
                      u"{{field:Street Address}}\n{{field:City}}, {{field:State}} "
                      "{{field:ZIP}}"_s,
                      clock, personal),
      Snippet::create(u"Phone Number"_s, u";phone"_s, u"{{field:Phone Number}}"_s, clock, personal),
      Snippet::create(u"Current Date"_s, u";date"_s, u"{{date:long}}"_s, clock),
      Snippet::create(u"Current Time"_s, u";time"_s, u"{{time}}"_s, clock),
  };
}

}  // namespace

FirstRunContent FirstRunContent::make(const Clock& clock) {
  return {sampleFolders(), sampleSnippets(clock)};
}

}  // namespace zarvy
