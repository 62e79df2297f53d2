// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CRowMenu.h"

#include "products/ItemState.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QShortcut>
#include <utility>

namespace {

void ToClipboard(const QString& text) {
    QApplication::clipboard()->setText(text);
}

bool HasPage(const CRowMenu::Item& row) {
    const IProduct& product = *row.product;
    return product.HasAction(row.item) && product.OpensPage() && !product.GetPage(row.item).IsEmpty();
}

}  // namespace

CRowMenu::CRowMenu(QTableWidget& table, Window window)
    : QObject(&table), table_(table), window_(std::move(window)) {
    table.installEventFilter(this);
    table.viewport()->installEventFilter(this);
    const auto onKeys = [&table](const auto& keys, auto act) {
        auto* shortcut = new QShortcut(keys, &table);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, &table, act);
    };
    onKeys(Qt::SHIFT | Qt::Key_F10, [this] { OpenOnName(FocusedRow()); });
    onKeys(QKeySequence::Copy, [this] { ToClipboard(window_.allText()); });
}

bool CRowMenu::eventFilter(QObject* watched, QEvent* event) {
    // A disabled button would keep the event to itself.
    if (event->type() == QEvent::ChildAdded && watched == table_.viewport())
        dynamic_cast<QChildEvent&>(*event).child()->installEventFilter(this);
    if (event->type() != QEvent::ContextMenu)
        return QObject::eventFilter(watched, event);
    const auto& wanted = dynamic_cast<QContextMenuEvent&>(*event);
    if (wanted.reason() == QContextMenuEvent::Keyboard)
        OpenOnName(FocusedRow());
    else if (watched != &table_)
        Open(table_.rowAt(table_.viewport()->mapFromGlobal(wanted.globalPos()).y()), wanted.globalPos());
    return true;
}

int CRowMenu::FocusedRow() const {
    const QWidget* focus = QApplication::focusWidget();
    if (focus && focus->parentWidget() == table_.viewport())
        return table_.rowAt(focus->geometry().center().y());
    return table_.currentRow() < 0 && table_.rowCount() > 0 ? 0 : table_.currentRow();
}

void CRowMenu::OpenOnName(int row) {
    if (row < 0)
        return;
    table_.scrollTo(table_.model()->index(row, 0));
    const QRect cell = table_.visualRect(table_.model()->index(row, 0));
    Open(row, table_.viewport()->mapToGlobal(cell.center()));
}

void CRowMenu::Open(int row, const QPoint& globalPosition) {
    const Item item = window_.itemOf(row);
    if (!item.product)
        return;
    auto* menu = new QMenu(&table_);
    menu->setObjectName("rowMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* page = menu->addAction(tr("Open Page"), [item] { item.product->RunAction(item.item); });
    page->setEnabled(HasPage(item));
    menu->addAction(tr("Copy"), [text = window_.textOf(row)] { ToClipboard(text); });
    menu->addAction(tr("Why?"), this, [this, item] { window_.explain(item); });
    AddSkipping(*menu, item);
    menu->popup(globalPosition);
}

void CRowMenu::AddSkipping(QMenu& menu, const Item& item) {
    const IProduct& product = *item.product;
    // Of a disabled product, too: its newer version opens the window of a silent check.
    if (product.IsHighlighted(item.item) || !product.IsUpdateAvailable(item.item))
        return;
    const bool isSkipped = !product.IsWanted(item.item);
    const QString text = isSkipped ? tr("Offer This Version Again") : tr("Skip This Version");
    menu.addAction(text, this, [this, item, isSkipped] {
        SetSkipped(*item.product, item.item, !isSkipped);
        window_.skippingChanged(item);
    });
}
