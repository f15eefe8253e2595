#pragma once

#include <functional>
#include <optional>
#include <utility>

#include <QList>
#include <QMap>
#include <QString>
#include <QTimer>
#include <QUuid>
#include <QWidget>

#include "core/model/FolderColor.h"
#include "core/model/Snippet.h"
#include "core/placeholders/FillInField.h"
#include "ui/fillin/EarlyKeys.h"

class QPushButton;
class QVBoxLayout;

namespace zarvy {

class Clock;
class DateFormatters;
class FieldDefaultsStore;
class FieldList;
class PreviewView;
class Scheduler;
class TextExpansionEngine;
class Workspace;

// What a form works with. All of it outlives the controller and its window.
struct FillInServices {
  const TextExpansionEngine& engine;
  FieldDefaultsStore& fieldDefaults;
  DateFormatters& dates;
  const Clock& clock;
  Scheduler& scheduler;
  Workspace& workspace;
};

// Asks for the values of a snippet's fields, and shows what the text is about to become. Main
// thread.
class StandaloneFillInForm final : public QWidget {
  Q_OBJECT

 public:
  // The answers by the name of the field; of two fields of one name the later one's.
  using OnExpand = std::function<void(const QMap<QString, QString>& values)>;
  using OnCancel = std::function<void()>;

  // The callbacks may close the window that the form is in, but not delete it on the spot.
  StandaloneFillInForm(Snippet snippet, FolderColor folderColor, const FillInServices& services,
                       OnExpand onExpand, OnCancel onCancel);

  // What was typed ahead of the form: `take` is asked once, when the first field has the keyboard.
  void setTypedAhead(std::function<QString()> take) { m_takeTypedAhead = std::move(take); }

  // Empty until the form has appeared, then as the user has left them.
  [[nodiscard]] const QList<FillInField>& fields() const { return m_fields; }

  // The field that has the keyboard.
  [[nodiscard]] std::optional<QUuid> focusedFieldID() const;

  // A required field, of whatever kind, is blank.
  [[nodiscard]] static bool isIncomplete(const QList<FillInField>& fields);

  [[nodiscard]] QSize sizeHint() const override;

  // A window on a small screen may give it less: then the panes give way.
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeHeader();
  [[nodiscard]] QWidget* makePanes();
  [[nodiscard]] QWidget* makePreviewPane();
  [[nodiscard]] QWidget* makeButtons();
  void addShortcuts();
  void appear();
  void focusFirstField();
  [[nodiscard]] QWidget* makeRows();
  void setField(qsizetype index, const FillInField& field);
  void rebuildPreview();
  void expand();

  const Snippet m_snippet;
  const FolderColor m_folderColor;
  const FillInServices m_services;
  const OnExpand m_onExpand;
  const OnCancel m_onCancel;
  std::function<QString()> m_takeTypedAhead;
  QList<FillInField> m_fields;
  bool m_hasAppeared = false;
  EarlyKeys m_earlyKeys;
  QVBoxLayout* m_upperPane = nullptr;
  FieldList* m_list = nullptr;  // null where there are no fields
  PreviewView* m_preview = nullptr;
  QPushButton* m_cancel = nullptr;
  QPushButton* m_expand = nullptr;
  QTimer m_previewTimer;  // rebuilds once for all keys that wait
};

}  // namespace zarvy
