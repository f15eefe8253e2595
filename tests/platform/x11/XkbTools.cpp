#include "platform/x11/XkbTools.h"

#include <stdexcept>

#include <QProcess>
#include <QProcessEnvironment>

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;

namespace {

void runTool(const QString& program, const QStringList& arguments, const QByteArray& input,
             const e2e::Environment& environment) {
  QProcessEnvironment variables;
  for (const auto& [name, value] : environment) {
    variables.insert(QString::fromStdString(name), QString::fromStdString(value));
  }
  QProcess tool;
  tool.setProcessEnvironment(variables);
  tool.start(program, arguments);
  tool.write(input);
  tool.closeWriteChannel();
  const bool succeeded =
      tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0;
  if (succeeded) return;
  throw std::runtime_error(program.toStdString() + ": " +
                           tool.readAllStandardError().toStdString());
}

}  // namespace

void setLayoutOfKeyboard(std::uint16_t device, const std::string& layout,
                         const e2e::Environment& environment) {
  runTool(u"setxkbmap"_s,
          {u"-device"_s, QString::number(device), u"-rules"_s, u"evdev"_s, u"-model"_s, u"pc105"_s,
           u"-layout"_s, QString::fromStdString(layout)},
          {}, environment);
}

void loadKeymap(const std::string& keymap, const e2e::Environment& environment) {
  runTool(u"xkbcomp"_s, {u"-w0"_s, u"-"_s, QString::fromStdString(environment.at("DISPLAY"))},
          QByteArray::fromStdString(keymap), environment);
}

}  // namespace zarvy::x11
