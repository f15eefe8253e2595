#include "ui/quicksearch/QuickSearchView.h"

#include <utility>

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "ui/controls/Divider.h"
#include "ui/controls/EmptyState.h"
#include "ui/controls/Keycap.h"
#include "ui/controls/PlainField.h"
#include "ui/controls/SymbolView.h"
#include "ui/quicksearch/QuickSearchList.h"
#include "ui/style/ToneKeeper.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int horizontalPadding = 18;  // where the circles of the rows are, too
constexpr int searchPadding = 14;      // below; above there is the panel's strip
constexpr int searchIconExtent = 18;
constexpr int resultsPadding = 4;
constexpr int nothingFoundExtent = 28;
constexpr int footerPadding = 8;
constexpr int hintSpacing = 4;
constexpr int hintGap = 14;

struct Key {
  QString name;
  std::optional<Symbol> symbol = std::nullopt;
};

// Some keys, and what they do.
void addHint(QHBoxLayout& line, const QList<Key>& keys, const QString& action) {
  QWidget* const bar = line.parentWidget();
  line.addSpacing(hintGap);
  for (const Key& key : keys) line.addWidget(new Keycap(key.name, key.symbol, bar));
  line.addWidget(inTone(new QLabel(action, bar), {TextColor::tertiary, lettering::caption}));
}

}  // namespace

QuickSearchView::QuickSearchView(const SnippetList& snippets, const QList<Folder>& folders,
                                 OnSelect onSelect, OnDismiss onDismiss)
    : m_onSelect(std::move(onSelect)),
      m_onDismiss(std::move(onDismiss)),
      m_model(snippets, folders) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(makeSearchBar());
  column->addWidget(new Divider(this));
  column->addWidget(makeResults(), 1);
  column->addWidget(new Divider(this));
  column->addWidget(makeFooter());
  showResults();
}

QString QuickSearchView::searchText() const {
  return m_search->text();
}

bool QuickSearchView::isSearchFocused() const {
  return m_search->hasFocus();
}

void QuickSearchView::focusSearch() {
  m_search->setFocus(Qt::ActiveWindowFocusReason);
}

QWidget* QuickSearchView::makeSearchBar() {
  auto* const bar = new QWidget(this);
  auto* const line = new QHBoxLayout(bar);
  line->setContentsMargins(horizontalPadding, 0, horizontalPadding, searchPadding);
  line->setSpacing(10);
  line->addWidget(new SymbolView(Symbol::magnifyingglass, searchIconExtent, bar));
  m_search = new PlainField(lettering::search, bar);
  m_search->setPlaceholderText(u"Search snippets..."_s);
  m_search->setAccessibleName(u"Search snippets"_s);
  connect(m_search, &QLineEdit::textChanged, this, &QuickSearchView::filter);
  connect(m_search, &QLineEdit::returnPressed, this, [this] { choose(m_selectedIndex); });
  line->addWidget(m_search, 1);
  return bar;
}

QWidget* QuickSearchView::makeResults() {
  m_pages = new QStackedWidget(this);
  m_pages->setContentsMargins(0, resultsPadding, 0, resultsPadding);
  m_list = new QuickSearchList(m_pages);
  m_list->setModel(&m_model);
  connect(m_list, &QListView::clicked, this,
          [this](const QModelIndex& index) { choose(index.row()); });
  m_pages->addWidget(m_list);
  auto* const nothing = new EmptyState(Symbol::docTextMagnifyingglass, nothingFoundExtent, m_pages);
  nothing->setTexts({}, u"No snippets found"_s);
  m_pages->addWidget(nothing);
  return m_pages;
}

QWidget* QuickSearchView::makeFooter() {
  auto* const bar = new QWidget(this);
  auto* const line = new QHBoxLayout(bar);
  line->setContentsMargins(horizontalPadding, footerPadding, horizontalPadding, footerPadding);
  line->setSpacing(hintSpacing);
  m_count = inTone(new QLabel(bar), {TextColor::tertiary, lettering::caption});
  line->addWidget(m_count);
  line->addStretch(1);
  addHint(*line, {{u"up arrow"_s, Symbol::arrowUp}, {u"down arrow"_s, Symbol::arrowDown}},
          u"navigate"_s);
  addHint(*line, {{u"return"_s}}, u"expand"_s);
  addHint(*line, {{u"esc"_s}}, u"close"_s);
  return bar;
}

// What the search field has no use for.
void QuickSearchView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      if (m_selectedIndex >= 1) setSelectedIndex(m_selectedIndex - 1);
      break;
    case Qt::Key_Down:
      if (m_selectedIndex < m_model.rowCount() - 1) setSelectedIndex(m_selectedIndex + 1);
      break;
    case Qt::Key_Escape:
      m_onDismiss();
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

void QuickSearchView::filter() {
  m_model.setSearchText(searchText());
  showResults();
  // A screen reader has just been told of the first row; what is typed is to be heard.
  QAccessibleEvent backFromRow(m_search, QAccessible::Focus);
  QAccessible::updateAccessibility(&backFromRow);
  Q_EMIT searchTextChanged();
}

void QuickSearchView::showResults() {
  const int results = m_model.rowCount();
  m_pages->setCurrentIndex(results == 0 ? 1 : 0);
  const QString all = QString::number(m_model.snippetCount());
  m_count->setText(searchText().isEmpty()
                       ? all + u" snippets"_s
                       : QString::number(results) + u" of "_s + all + u" snippets"_s);
  setSelectedIndex(0);
}

void QuickSearchView::setSelectedIndex(int row) {
  const bool isChanged = std::exchange(m_selectedIndex, row) != row;
  m_list->select(row);
  if (isChanged) Q_EMIT selectedIndexChanged();
}

void QuickSearchView::choose(int row) {
  if (row < 0 || row >= m_model.rowCount()) return;
  const Snippet snippet = m_model.snippetAt(row);  // outlives whatever the callback closes
  m_onSelect(snippet);
}

}  // namespace zarvy
