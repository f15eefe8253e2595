// Every text of every window of the program can be read in the colours of the desktops that there
// are: 4.5 to 1, as the standard for accessible contents asks.

#include <functional>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "app/ExpansionHarness.h"
#include "support/QtPrinters.h"
#include "ui/ComingWindow.h"
#include "ui/MenuBarView.h"
#include "ui/PermissionRequestView.h"
#include "ui/Scenes.h"
#include "ui/contrast/PaintedTexts.h"
#include "ui/contrast/RealPalettes.h"
#include "ui/controls/EmptyState.h"
#include "ui/controls/GroupedForm.h"
#include "ui/controls/SearchField.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/Sheet.h"
#include "ui/controls/SmallButton.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/controls/TintedButton.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/StandaloneFillInForm.h"
#include "ui/quicksearch/FloatingPanel.h"
#include "ui/quicksearch/QuickSearchView.h"
#include "ui/quicksearch/SearchedLibrary.h"
#include "ui/style/DesktopColors.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Of a text in the colour of its ground, as is the relief of what is disabled.
constexpr double unseen = 1.001;

// A window of the program, and some of the texts that must be found in it.
struct Shown {
  std::shared_ptr<QWidget> window;
  QStringList texts;
};

struct SomeWindow {
  const char* name = "";
  std::function<Shown()> open;
};

void PrintTo(const SomeWindow& window, std::ostream* out) {
  *out << window.name;
}

std::unique_ptr<QWidget> formFor(const QString& replacement) {
  static FillInHarness harness;
  auto form = std::make_unique<StandaloneFillInForm>(
      FillInHarness::snippet(replacement), FolderColor::yellow, harness.services(),
      [](const QMap<QString, QString>&) {}, [] {});
  form->resize(500, 1100);  // all of it is to be seen
  form->show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
  return form;
}

Shown form() {
  Shown shown{formFor(u"Dear {{field:Name:Ada:required}}, {{textarea:Text:some lines:required}} "
                      "{{dropdown:Day:Monday,Tuesday}} {{?:Section}}Whether{{/?}} {{clipboard}} "
                      "{{field:Chosen:old}}"_s),
              {u"Fill In Values"_s, u"Complete the fields below"_s, u";letter"_s, u"Name"_s,
               u"Ada"_s, u"some lines"_s, u"Monday"_s, u"Section"_s, u"Whether"_s, u"Remember"_s,
               u"*"_s, u"[clipboard]"_s, u"old"_s, u"Cancel"_s, u"Expand"_s, u"Preview"_s}};
  QLineEdit* const last = shown.window->findChildren<QLineEdit*>().last();
  last->setFocus();
  last->selectAll();
  for (auto* const text : shown.window->findChildren<QPlainTextEdit*>()) text->selectAll();
  return shown;
}

Shown formWithoutFields() {
  return {formFor(u"nothing"_s), {u"No fill-in fields in this snippet"_s, u"nothing"_s}};
}

std::unique_ptr<QWidget> panelWith(const QString& search) {
  const QList<Folder> folders{searchedFolder(FolderColor::yellow)};
  QList<Snippet> snippets = libraryOf({{u"Signature"_s, u";sig"_s}, {u"Date"_s, u";date"_s}});
  snippets.front().folderID = folders.front().id;
  auto view = std::make_unique<QuickSearchView>(
      snippets, folders, [](const Snippet&) {}, [] {});
  auto panel = std::make_unique<FloatingPanel>(std::move(view), false);
  panel->findChild<QLineEdit*>()->setText(search);
  panel->show();
  return panel;
}

Shown quickSearch() {
  return {panelWith({}),
          {u"Search snippets..."_s, u"Signature"_s, u";sig"_s, u"Date"_s, u";date"_s,
           u"2 snippets"_s, u"navigate"_s, u"return"_s, u"esc"_s}};
}

Shown quickSearchWithoutResults() {
  return {panelWith(u"zebra"_s), {u"zebra"_s, u"No snippets found"_s, u"0 of 2 snippets"_s}};
}

ExpansionHarness& program() {
  static ExpansionHarness harness;
  return harness;
}

Shown setup(bool isGranted) {
  program().permission.setTrusted(isGranted);
  program().state->expansion().refreshAccessibilityPermission();
  auto window = std::make_unique<PermissionRequestView>(program().state->expansion(), [] {});
  window->show();
  return {std::move(window),
          {u"Accessibility Permission Required"_s, u"Works in any application"_s}};
}

Shown setupMissing() {
  Shown shown = setup(false);
  shown.texts += {u"Request Permission"_s, u"Check Permission"_s, u"the test took it away"_s};
  return shown;
}

Shown setupWithoutRequest() {
  program().permission.isAskable = false;
  Shown shown = setup(false);
  program().permission.isAskable = true;
  shown.texts += {u"Check Permission"_s, u"the test took it away"_s, u"give it back"_s};
  return shown;
}

Shown setupGranted() {
  Shown shown = setup(true);
  shown.texts += {u"Permission Granted"_s, u"Get Started"_s};
  return shown;
}

Shown coming() {
  auto window = std::make_unique<ComingWindow>(Scene::settings, *program().state);
  window->resize(500, 200);
  window->show();
  return {std::move(window), {}};
}

Shown takenHotKey() {
  program().makeState();
  program().hotKeys.taken = {{49, 0x80000}};  // Alt+Space
  program().load({{program().snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  program().hotKeys.taken = {};
  EXPECT_TRUE(program().state->expansion().takenHotKey());
  Shown shown = coming();
  for (const QPushButton* offer : shown.window->findChildren<QPushButton*>()) {
    shown.texts.append(offer->text());
  }
  EXPECT_EQ(shown.texts.size(), 3);
  return shown;
}

Shown menu() {
  program().permission.setTrusted(true);
  program().makeState();
  program().workspace.setFrontmost(RunningApplication{10, {}, u"Safe"_s, 1});
  program().secureInput.isEnabled = true;
  program().load({{program().snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  auto window = std::make_unique<MenuBarView>(
      program().state->library(), program().state->selection(), program().state->expansion(),
      [](Scene) {}, [] {});
  program().scheduler.advance(std::chrono::seconds(1));
  window->resize(window->sizeHint());
  window->ensurePolished();
  return {std::move(window), {u"Blocked by Safe"_s, u"1 snippets"_s, u"Settings..."_s}};
}

// What no window has yet, and some more of what many will have.
Shown controls() {
  auto window = std::make_unique<QWidget>();
  auto* const column = new QVBoxLayout(window.get());
  column->addWidget(new SearchField(u"Search variables..."_s, window.get()));
  column->addWidget(new SegmentedPicker(u"Range"_s, {u"Today"_s, u"7 Days"_s}, window.get()));
  for (const auto& [tint, text] :
       {std::pair(TintedButton::Tint::prominent, u"Import..."_s),
        std::pair(TintedButton::Tint::destructive, u"Clear History"_s),
        std::pair(TintedButton::Tint::prominentDestructive, u"Delete"_s)}) {
    column->addWidget(new TintedButton(tint, text, window.get()));
  }
  column->addWidget(smallButton(u"Record Shortcut"_s, window.get()));
  auto* const form = new GroupedForm(window.get());
  auto* const undo = new QPushButton(u"Undo"_s, form);
  form->addSection(u"Sync"_s).addRow(u"Imported"_s, *undo, u"2 snippets"_s);
  column->addWidget(form);
  column->addWidget(new SymbolLabel(Symbol::checkmarkCircleFill, meaning::success, u"Synced"_s,
                                    {meaning::success}, window.get()));
  auto* const nothing = new EmptyState(Symbol::globe, 48, window.get());
  nothing->setTexts(u"No Results"_s, u"Nothing matches."_s);
  column->addWidget(nothing);
  window->resize(400, window->sizeHint().height());
  window->show();
  return {std::move(window),
          {u"Search variables..."_s, u"Today"_s, u"7 Days"_s, u"Import..."_s, u"Clear History"_s,
           u"Delete"_s, u"Record Shortcut"_s, u"Sync"_s, u"Imported"_s, u"2 snippets"_s, u"Undo"_s,
           u"Synced"_s, u"No Results"_s, u"Nothing matches."_s}};
}

Shown sheet() {
  const auto owner = std::make_shared<QWidget>();
  auto made = std::make_unique<Sheet>(Sheet::Words{u"Add Text Field"_s, u"Insert"_s}, 300, *owner);
  // Deleted ahead of its owner.
  const std::shared_ptr<Sheet> window(made.release(), [owner](Sheet* sheet) { delete sheet; });
  window->setAttribute(Qt::WA_DeleteOnClose, false);
  auto* const field = new QLineEdit(window.get());
  field->setPlaceholderText(u"Field name"_s);
  window->body().addWidget(new QCheckBox(u"Required"_s, window.get()));
  window->body().addWidget(field);
  window->open();
  return {window, {u"Add Text Field"_s, u"Required"_s, u"Field name"_s, u"Cancel"_s, u"Insert"_s}};
}

const SomeWindow allWindows[] = {{"Form", form},
                                 {"FormWithoutFields", formWithoutFields},
                                 {"QuickSearch", quickSearch},
                                 {"QuickSearchWithoutResults", quickSearchWithoutResults},
                                 {"SetupMissing", setupMissing},
                                 {"SetupWithoutRequest", setupWithoutRequest},
                                 {"SetupGranted", setupGranted},
                                 {"Coming", coming},
                                 {"TakenHotKey", takenHotKey},
                                 {"Menu", menu},
                                 {"Controls", controls},
                                 {"Sheet", sheet}};

class Contrast : public testing::TestWithParam<SomeWindow> {
 protected:
  Contrast() { QApplication::setCursorFlashTime(0); }
  ~Contrast() override { QApplication::setPalette(m_before); }

  // As the program shows itself on that desktop.
  static void turnTo(const RealPalette& colors) {
    const QPalette desktop = paletteOf(colors);
    QApplication::setPalette(legibleRoles(desktop).resolve(desktop));
    QApplication::processEvents();
  }

  const QPalette m_before = QApplication::palette();
};

TEST_P(Contrast, LetsEveryTextBeRead) {
  for (const RealPalette& colors : realPalettes) {
    SCOPED_TRACE(colors.name);
    turnTo(colors);
    const Shown shown = GetParam().open();
    QApplication::processEvents();
    const PaintedWindow painted = paintedWindow(*shown.window);
    EXPECT_FALSE(painted.texts.empty());
    for (const QString& wanted : shown.texts) {
      EXPECT_TRUE(std::any_of(
          painted.texts.begin(), painted.texts.end(),
          [&](const PaintedText& text) { return text.text == wanted && text.contrast > unseen; }))
          << wanted.toStdString() << " is not drawn";
    }
    for (const PaintedText& text : painted.texts) {
      EXPECT_TRUE(text.contrast >= 4.5 || text.contrast <= unseen)
          << text.contrast << ": " << text.text.toStdString() << " in "
          << text.color.name(QColor::HexArgb).toStdString();
    }
  }
}

// A window that is open while the desktop turns dark, or light again.
TEST_P(Contrast, KeepsNoColorOfTheDesktopBefore) {
  for (const auto& [from, to] : {std::pair(0, 1), std::pair(1, 0), std::pair(5, 7)}) {
    turnTo(realPalettes.at(static_cast<std::size_t>(from)));
    const Shown old = GetParam().open();
    QApplication::processEvents();
    turnTo(realPalettes.at(static_cast<std::size_t>(to)));
    const PaintedWindow afterwards = paintedWindow(*old.window);
    old.window->hide();
    const Shown fresh = GetParam().open();
    QApplication::processEvents();
    const PaintedWindow expected = paintedWindow(*fresh.window);
    ASSERT_EQ(afterwards.texts.size(), expected.texts.size());
    for (std::size_t index = 0; index < expected.texts.size(); ++index) {
      EXPECT_EQ(afterwards.texts[index].color, expected.texts[index].color)
          << expected.texts[index].text.toStdString();
    }
    EXPECT_TRUE(afterwards.ground == expected.ground);
  }
}

INSTANTIATE_TEST_SUITE_P(Windows, Contrast, testing::ValuesIn(allWindows),
                         [](const auto& window) { return std::string(window.param.name); });

// A check that finds nothing anywhere would prove nothing.
TEST(ContrastCheck, FindsATextThatCannotBeRead) {
  QLabel label(u"faint"_s);
  label.setPalette(paletteOf(realPalettes[1]));
  label.setForegroundRole(QPalette::PlaceholderText);
  label.resize(label.sizeHint());
  const PaintedWindow painted = paintedWindow(label);
  ASSERT_EQ(painted.texts.size(), 1U);
  EXPECT_NEAR(painted.texts.front().contrast, 1.3, 0.1);
  label.setForegroundRole(QPalette::WindowText);
  const PaintedWindow legible = paintedWindow(label);
  EXPECT_GT(legible.texts.front().contrast, 10);
}

}  // namespace
}  // namespace zarvy
