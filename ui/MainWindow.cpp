// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/MainWindow.h"

#include "platform/CAtlStringA.h"
#include "ui/CElidedNameDelegate.h"
#include "ui/RowWidgets.h"

#include <QKeyEvent>
#include <QLocale>
#include <boost/bind.hpp>
#include <iostream>

namespace {

enum Column { NAME, INSTALLED, LATEST, ACTION, COLUMNS };

// The header of the column of buttons shows nothing and reserves their width, in blanks.
constexpr int ACTION_COLUMN_BLANKS = 29;

void PrintProgress(const char* before, const IProduct& product, const char* after) {
    std::cout << before << CAtlStringA(CAtlString(product.GetName())).GetString() << after << std::endl;
}

QString DateText(int julianDay) {
    if (julianDay == 0)
        return {};
    return QLocale::system().toString(QDate::fromJulianDay(julianDay), QLocale::ShortFormat);
}

}  // namespace

MainWindow::MainWindow(const boost::shared_ptr<IEnvironment>& environment, QWidget* parent)
    : QDialog(parent, Qt::Dialog), environment_(environment) {
    setupUi(this);
    connect(cancelButton, &QPushButton::clicked, this, &MainWindow::OnClose);
    connect(proxyButton, &QPushButton::clicked, this, &MainWindow::OnProxyOptions);
    connect(retryButton, &QPushButton::clicked, this, &MainWindow::OnCheckUpdates);
    connect(spinBox, &QSpinBox::valueChanged, this, &MainWindow::OnIntervalChanged);
    connect(checkBox, &QCheckBox::stateChanged, this, &MainWindow::OnCheckboxChanged);
    connect(&busyTimer_, &QTimer::timeout, this, &MainWindow::OnTooLong);
    busyTimer_.setSingleShot(true);
    busyTimer_.setInterval(BUSY_AFTER);
    highlight_ = MakeHighlightBrush(tableWidget->palette().color(QPalette::Base));
    tableWidget->setItemDelegateForColumn(NAME, new CElidedNameDelegate(tableWidget));
    ResetTable();
}

MainWindow::~MainWindow() {
    if (!controller_)
        return;
    controller_->SetCheckFinishedCallback({});
    controller_->SetCheckStartedCallback({});
}

void MainWindow::SetProductListController(const boost::shared_ptr<CProductListController>& controller) {
    controller_ = controller;
    controller_->SetCheckFinishedCallback(boost::bind(&MainWindow::OnProductChecked, this, _1));
    controller_->SetCheckStartedCallback(boost::bind(&MainWindow::OnCheckingProduct, this, _1));
}

void MainWindow::ShowProducts() {
    checkBox->setChecked(record_->GetCheckUpdates());
    spinBox->setValue(record_->GetInterval());
    labelDate->setText(DateText(record_->GetLastChecked()));
    ResetTable();
    for (const Product& product : controller_->GetProducts())
        for (unsigned item = 0; item < product->GetItemCount(); ++item)
            AddItemRow(product, item);
}

void MainWindow::OnConnectionError(QString message) {
    statusLabel->setText(message);
}

void MainWindow::OnProxyOptions() {
    proxyHandler_->ShowProxyOptionsDialog(this);
}

void MainWindow::OnCheckUpdates() {
    std::cout << std::endl;
    proxyHandler_->SetInteractive(true);
    statusLabel->clear();
    retryButton->setEnabled(false);
    proxyButton->setEnabled(false);
    controller_->LoadProductList();
    controller_->FindInstalled();
    ShowProducts();
    controller_->CheckForUpdates();
    if (controller_->GetLastCheckResult())
        record_->SetNewLastChecked(static_cast<int>(environment_->Today().toJulianDay()));
    retryButton->setEnabled(true);
    proxyButton->setEnabled(true);
}

void MainWindow::OnClose() {
    reject();
}

void MainWindow::OnCheckboxChanged(int state) {
    record_->SetCheckUpdates(state == Qt::Checked);
}

void MainWindow::OnIntervalChanged(int value) {
    record_->SetInterval(value);
}

void MainWindow::OnTooLong() {
    if (!current_)
        return;
    for (unsigned item = 0; item < current_->GetItemCount(); ++item)
        if (HasRow(current_, item))
            tableWidget->setCellWidget(current_->GetRow(item), LATEST,
                                       MakeBusyIndicator(tableWidget->palette().brush(QPalette::Base)));
}

void MainWindow::closeEvent(QCloseEvent* /*event*/) {
    reject();
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}

void MainWindow::OnCheckingProduct(const Product& product) {
    if (!product)
        return;
    PrintProgress("- Checking ", *product, "...");
    current_ = product;
    busyTimer_.start();
}

void MainWindow::OnProductChecked(const Product& product) {
    if (!product)
        return;
    PrintProgress("- Done ", *product, "");
    current_.reset();
    busyTimer_.stop();
    for (unsigned item = 0; item < product->GetItemCount(); ++item)
        ShowCheckedItem(product, item);
}

void MainWindow::OnRowButton(int /*row*/, const RowAction& action) {
    if (action)
        action();
}

void MainWindow::ResetTable() {
    tableWidget->setRowCount(0);
    tableWidget->clear();
    rowActions_.clear();
    tableWidget->setColumnCount(COLUMNS);
    tableWidget->setHorizontalHeaderLabels(
        {tr("Product"), tr("Installed version"), tr("Latest version"), QString(ACTION_COLUMN_BLANKS, u' ')});
    QHeaderView* header = tableWidget->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(NAME, QHeaderView::Stretch);
    header->setSectionsClickable(false);
    header->setSectionsMovable(false);
    tableWidget->verticalHeader()->hide();
}

int MainWindow::AddRow(bool withButton, const RowAction& action) {
    const int row = tableWidget->rowCount();
    tableWidget->insertRow(row);
    tableWidget->setItem(row, NAME, MakeCell());
    tableWidget->setItem(row, INSTALLED, MakeCentredCell());
    tableWidget->setItem(row, LATEST, MakeCentredCell());
    if (withButton)
        AddButton(row, action);
    return row;
}

void MainWindow::AddButton(int row, const RowAction& action) {
    QPushButton* button = MakeRowButton(tr("Current"));
    // Deleted later, because the rows may be rebuilt while this very action runs.
    const boost::shared_ptr<Qtfier> click(
        new Qtfier(boost::bind(&MainWindow::OnRowButton, this, row, action)),
        [](Qtfier* retired) { retired->deleteLater(); });
    connect(button, &QPushButton::clicked, click.get(), &Qtfier::Slot);
    rowActions_.push_back(click);
    tableWidget->setCellWidget(row, ACTION, button);
}

int MainWindow::AddProductRow(const Product& product, unsigned item) {
    return product ? AddItemRow(product, item) : -1;
}

int MainWindow::AddItemRow(const Product& product, unsigned item) {
    const int row = AddRow(product->HasAction(item), boost::bind(&IProduct::RunAction, product, item));
    product->SetRow(item, row);
    FillInstalled(product, item);
    return row;
}

void MainWindow::FillInstalled(const Product& product, unsigned item) {
    const int row = product->GetRow(item);
    tableWidget->item(row, NAME)->setText(product->GetName());
    tableWidget->item(row, INSTALLED)->setText(product->GetInstalledVersion(item).ToQString());
}

void MainWindow::ShowCheckedItem(const Product& product, unsigned item) {
    const int row = HasRow(product, item) ? product->GetRow(item) : AddProductRow(product, item);
    if (QWidget* busy = tableWidget->cellWidget(row, LATEST)) {
        busy->hide();
        tableWidget->removeCellWidget(row, LATEST);
    }
    // Some items know only after their check that something can be done about them.
    if (!RowButton(row) && product->HasAction(item))
        AddButton(row, boost::bind(&IProduct::RunAction, product, item));
    if (product->IsChecked(item))
        ShowLatest(product, item, row);
    else
        tableWidget->item(row, LATEST)->setText(tr("N/A"));
    if (product->IsHighlighted(item))
        Highlight(row);
}

void MainWindow::ShowLatest(const Product& product, unsigned item, int row) {
    tableWidget->item(row, LATEST)->setText(product->GetLatestVersion(item).ToQString());
    QPushButton* button = RowButton(row);
    if (!button)
        return;
    const bool available = product->IsUpdateAvailable(item);
    button->setText(product->GetActionTexts().value(available ? 1 : 0));
    button->setEnabled(available);
}

void MainWindow::Highlight(int row) {
    QTableWidgetItem* cell = tableWidget->item(row, NAME);
    cell->setBackground(highlight_);
    tableWidget->scrollToItem(cell);
}

bool MainWindow::HasRow(const Product& product, unsigned item) const {
    const int row = product->GetRow(item);
    return row >= 0 && row < tableWidget->rowCount();
}

QPushButton* MainWindow::RowButton(int row) const {
    return qobject_cast<QPushButton*>(tableWidget->cellWidget(row, ACTION));
}
