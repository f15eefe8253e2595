#pragma once

#include <functional>

#include <QList>
#include <QString>
#include <QWidget>

#include "core/model/Folder.h"
#include "core/model/SnippetList.h"
#include "ui/quicksearch/QuickSearchModel.h"

class QLabel;
class QLineEdit;
class QStackedWidget;

namespace zarvy {

class QuickSearchList;

// Finds a snippet by what the user types, and lets one be chosen by keyboard or pointer. Main
// thread.
class QuickSearchView final : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString searchText READ searchText NOTIFY searchTextChanged)
  Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectedIndexChanged)

 public:
  using OnSelect = std::function<void(const Snippet& snippet)>;
  using OnDismiss = std::function<void()>;

  // The callbacks may hide the window that the view is in, but not delete it on the spot.
  QuickSearchView(const SnippetList& snippets, const QList<Folder>& folders, OnSelect onSelect,
                  OnDismiss onDismiss);

  // Empty at first.
  [[nodiscard]] QString searchText() const;

  // A row of the results, the first one at first and after each change of the text. 0 also where
  // there are none.
  [[nodiscard]] int selectedIndex() const { return m_selectedIndex; }

  [[nodiscard]] bool isSearchFocused() const;
  void focusSearch();

 Q_SIGNALS:
  void searchTextChanged();
  void selectedIndexChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeSearchBar();
  [[nodiscard]] QWidget* makeResults();
  [[nodiscard]] QWidget* makeFooter();
  void filter();
  void showResults();
  void setSelectedIndex(int row);
  void choose(int row);

  const OnSelect m_onSelect;
  const OnDismiss m_onDismiss;
  QuickSearchModel m_model;
  int m_selectedIndex = 0;
  QLineEdit* m_search = nullptr;
  QStackedWidget* m_pages = nullptr;
  QuickSearchList* m_list = nullptr;
  QLabel* m_count = nullptr;
};

}  // namespace zarvy
