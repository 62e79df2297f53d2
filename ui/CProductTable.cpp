// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CProductTable.h"

#include "platform/text/PrintableText.h"
#include "ui/CCellDelegate.h"
#include "ui/PlainText.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLinearGradient>
#include <QProgressBar>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace {

enum Column { NAME, INSTALLED, LATEST, ACTION, COLUMNS };

// The header of the column of buttons shows nothing and reserves their width, in blanks.
constexpr int ACTION_COLUMN_BLANKS = 29;
// As many rows as a tall screen shows. The default, 1000, lays out all their texts again after each checked
// product, which costs more than fetching. With 0, a hidden table would ask all rows.
constexpr int ROWS_THAT_DECIDE_WIDTHS = 50;

// The role of a cell's uncut text.
constexpr int WHOLE_TEXT = Qt::UserRole;

// A longer text would push the buttons out of the window.
constexpr qsizetype LONGEST_VERSION = 20;

// Cut at so many characters, with the rest in the tool tip.
void SetText(QTableWidgetItem& cell, const QString& text, qsizetype longest) {
    cell.setText(Cut(text, longest));
    cell.setToolTip(text.size() > longest ? Cut(text) : QString());
    cell.setData(WHOLE_TEXT, text);
}

void SetReason(QTableWidgetItem& cell, const QString& reason) {
    cell.setToolTip(Cut(reason));
    cell.setData(Qt::AccessibleDescriptionRole, Cut(reason));
}

// In milliseconds: a double click shall not open a second browser.
constexpr int SHORTEST_REST = 1000;

// Disables the button while its action runs, which may serve events, and for a second at least. Gives it back
// its focus then, unless the user moved it; meanwhile the table has it, since Enter would press a button.
void Press(QPushButton& button, QTableWidget& table, const CProductTable::Action& action) {
    if (!action)
        return;
    bool isGone = false;
    const auto watch = QObject::connect(&button, &QObject::destroyed, [&isGone] { isGone = true; });
    const bool hadFocus = button.window()->focusWidget() == &button;
    QElapsedTimer rest;
    rest.start();
    if (hadFocus)
        table.setFocus();
    button.setEnabled(false);
    action();
    if (isGone)
        return;
    QObject::disconnect(watch);
    const int remaining = std::max(0, SHORTEST_REST - static_cast<int>(rest.elapsed()));
    QTimer::singleShot(remaining, &button, [&button, &table, hadFocus] {
        button.setEnabled(true);
        if (hadFocus && table.window()->focusWidget() == &table)
            button.setFocus();
    });
}

// An empty read-only cell.
QTableWidgetItem* MakeCell() {
    auto* cell = new QTableWidgetItem;
    cell->setFlags(Qt::ItemIsEnabled);
    return cell;
}

// The same, with its text in the middle.
QTableWidgetItem* MakeCentredCell() {
    QTableWidgetItem* cell = MakeCell();
    cell->setTextAlignment(Qt::AlignCenter);
    return cell;
}

// A disabled button with that text, named "rowButton".
QPushButton* MakeRowButton(const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName("rowButton");
    button->setEnabled(false);
    button->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Preferred);
    return button;
}

// An endless progress bar (named "busyBar") for a cell; base is the cell's background.
QWidget* MakeBusyIndicator(const QBrush& base) {
    auto* indicator = new QWidget;
    auto* layout = new QVBoxLayout(indicator);
    auto* bar = new QProgressBar;
    bar->setObjectName("busyBar");
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    QPalette palette = bar->palette();
    for (const auto role : {QPalette::Window, QPalette::Mid, QPalette::Dark, QPalette::Light,
                            QPalette::Shadow, QPalette::Midlight})
        palette.setBrush(role, base);
    bar->setPalette(palette);
    layout->addWidget(bar);
    return indicator;
}

// A faint blue at the cell's left edge that has faded into base after 300 pixels.
QBrush MakeHighlightBrush(const QColor& base) {
    constexpr int FADED_AFTER = 300;
    QLinearGradient gradient(0, 0, FADED_AFTER, 0);
    gradient.setColorAt(0, QColor(0, 50, 255, 50));
    gradient.setColorAt(1, base);
    return gradient;
}

}  // namespace

CProductTable::CProductTable(QTableWidget& table)
    : table_(table), highlight_(MakeHighlightBrush(table.palette().color(QPalette::Base))) {
    table_.setItemDelegate(new CCellDelegate(&table_));
    // The texts of their own menu have no translations.
    for (QScrollBar* bar : table_.findChildren<QScrollBar*>())
        bar->setContextMenuPolicy(Qt::NoContextMenu);
    // The table's own scrolling is off. A cell that is clicked stays where it is. The first current cell is
    // not the user's choice: the table takes it with the focus.
    QObject::connect(&table_, &QTableWidget::currentCellChanged, [&table](int, int, int rowBefore, int) {
        if (rowBefore >= 0 && QApplication::mouseButtons() == Qt::NoButton)
            table.scrollTo(table.currentIndex());
    });
    Reset();
}

void CProductTable::Reset() {
    // Already set up: doing it again would measure all the header's texts again.
    if (table_.columnCount() == COLUMNS && table_.rowCount() == 0)
        return;
    table_.setRowCount(0);
    table_.clear();
    table_.clearSpans();
    rowActions_.clear();
    table_.setColumnCount(COLUMNS);
    table_.setHorizontalHeaderLabels(
        {tr("Product"), tr("Installed version"), tr("Latest version"), QString(ACTION_COLUMN_BLANKS, u' ')});
    QHeaderView* header = table_.horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(NAME, QHeaderView::Stretch);
    header->setResizeContentsPrecision(ROWS_THAT_DECIDE_WIDTHS);
    header->setSectionsClickable(false);
    header->setSectionsMovable(false);
    table_.verticalHeader()->hide();
    table_.viewport()->setAccessibleName(tr("Actions"));
}

int CProductTable::AddRow(const QString& name, const QString& installed) {
    const int row = table_.rowCount();
    table_.insertRow(row);
    // The new row makes the table look at its widths once, later; each announced cell would do so at once.
    const QSignalBlocker quiet(table_.model());
    table_.setItem(row, NAME, MakeCell());
    table_.setItem(row, INSTALLED, MakeCentredCell());
    table_.setItem(row, LATEST, MakeCentredCell());
    SetText(*table_.item(row, NAME), name, LONGEST_SHOWN);
    SetText(*table_.item(row, INSTALLED), installed, LONGEST_VERSION);
    return row;
}

void CProductTable::AddButton(int row, const Action& action) {
    QPushButton* button = MakeRowButton(tr("Current"));
    NameButton(row, *button);
    // The rows may be rebuilt while this action runs, so a copy of it runs and the deletion waits.
    const boost::shared_ptr<Qtfier> click(
        new Qtfier([this, button, action] { Press(*button, table_, Action(action)); }),
        [](Qtfier* retired) { retired->deleteLater(); });
    QObject::connect(button, &QPushButton::clicked, click.get(), &Qtfier::Slot);
    rowActions_.push_back(click);
    // A widget with a size is not asked for its size hint when it appears; the cell resizes it.
    button->resize(0, 0);
    table_.setCellWidget(row, ACTION, button);
    QWidget::setTabOrder(FocusBefore(row), button);
}

void CProductTable::SetButton(int row, const QString& caption, bool enabled) {
    QPushButton* button = Button(row);
    if (!button)
        return;
    button->setText(caption);
    button->setEnabled(enabled);
    NameButton(row, *button);
}

// A screen reader reads a button without its row.
void CProductTable::NameButton(int row, QPushButton& button) const {
    button.setAccessibleName(QStringList({button.text(), table_.item(row, NAME)->text(),
                                          table_.item(row, INSTALLED)->text().trimmed()})
                                 .join(' ')
                                 .trimmed());
}

void CProductTable::ShowBusy(int row) {
    QWidget* busy = MakeBusyIndicator(table_.palette().brush(QPalette::Base));
    const QString name = tr("Checking %1").arg(table_.item(row, NAME)->text());
    for (QWidget* part : {busy, busy->findChild<QWidget*>("busyBar")})
        part->setAccessibleName(name);
    table_.setCellWidget(row, LATEST, busy);
}

void CProductTable::ShowLatest(int row, const QString& text) {
    if (QWidget* busy = table_.cellWidget(row, LATEST)) {
        busy->hide();
        table_.removeCellWidget(row, LATEST);
    }
    SetLatest(*table_.item(row, LATEST), text);
    if (text.trimmed().isEmpty() && table_.item(row, INSTALLED)->text().trimmed().isEmpty())
        table_.setSpan(row, NAME, 1, ACTION);
}

int CProductTable::WidthThatNamesLack(int widest) const {
    // New rows may bring the scroll bar, which takes its width from the names. The table shows it by an
    // event.
    table_.doItemsLayout();
    QCoreApplication::sendPostedEvents(&table_, QEvent::MetaCall);
    int longest = 0;
    const int rows = std::min(table_.rowCount(), ROWS_THAT_DECIDE_WIDTHS);
    for (int row = 0; row < rows; ++row)
        if (table_.columnSpan(row, NAME) == 1)
            longest = std::max(longest, table_.sizeHintForIndex(table_.model()->index(row, NAME)).width());
    return std::max(0, std::min(longest, widest) - table_.columnWidth(NAME));
}

// An announced cell makes the header measure all columns anew, which takes longer than fetching the cell's
// content. So a cell that is wide enough is only painted, unless a screen reader is active.
void CProductTable::SetLatest(QTableWidgetItem& cell, const QString& text) {
    const QSignalBlocker quiet(QAccessible::isActive() ? nullptr : table_.model());
    SetText(cell, text, LONGEST_VERSION);
    const QModelIndex index = table_.indexFromItem(&cell);
    table_.update(index);
    if (table_.sizeHintForIndex(index).width() > table_.columnWidth(LATEST))
        MeasureColumns();
}

// Setting a mode measures again, even when the mode is the same.
void CProductTable::MeasureColumns() {
    table_.horizontalHeader()->setSectionResizeMode(LATEST, QHeaderView::ResizeToContents);
}

void CProductTable::ShowReasons(int row, const QString& latest, const QString& action) {
    const QSignalBlocker quiet(table_.model());
    if (!latest.isEmpty())
        SetReason(*table_.item(row, LATEST), latest);
    if (QPushButton* button = Button(row)) {
        if (action == button->accessibleDescription())
            return;
        button->setToolTip(AsHtml(Cut(action)));
        button->setAccessibleDescription(Cut(action));
        return;
    }
    if (!table_.item(row, ACTION) && !action.isEmpty())
        table_.setItem(row, ACTION, MakeCell());
    if (table_.item(row, ACTION))
        SetReason(*table_.item(row, ACTION), action);
}

QString CProductTable::RowText(int row) const {
    QStringList texts;
    for (const int column : {NAME, INSTALLED, LATEST})
        texts << table_.item(row, column)->data(WHOLE_TEXT).toString().simplified();
    return texts.join('\t');
}

void CProductTable::ScrollTo(const QWidget* widget) {
    if (widget && widget->parentWidget() == table_.viewport())
        table_.scrollTo(table_.indexAt(widget->geometry().center()));
}

void CProductTable::Highlight(int row) {
    QTableWidgetItem* cell = table_.item(row, NAME);
    cell->setBackground(highlight_);
    table_.scrollToItem(cell);
}

QPushButton* CProductTable::Button(int row) const {
    return qobject_cast<QPushButton*>(table_.cellWidget(row, ACTION));
}

// Buttons come after the table in the tab order, and in the order of their rows.
QWidget* CProductTable::FocusBefore(int row) const {
    while (--row >= 0)
        if (QPushButton* button = Button(row))
            return button;
    return &table_;
}
