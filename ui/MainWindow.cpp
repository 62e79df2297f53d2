// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/MainWindow.h"

#include "platform/text/PrintableText.h"
#include "ui/CWindowAccessible.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <algorithm>
#include <boost/bind.hpp>
#include <iostream>

namespace {

void PrintProgress(const char* before, const IProduct& product, const char* after) {
    std::cout << before << PrintableNarrow(CAtlString(product.GetName())) << after << std::endl;
}

// None of its items could be checked.
bool IsUnchecked(const IProduct& product) {
    const unsigned items = product.GetItemCount();
    for (unsigned item = 0; item < items; ++item)
        if (product.IsChecked(item))
            return false;
    return items > 0;
}

QString DateText(int julianDay) {
    if (julianDay == 0)
        return {};
    return QLocale::system().toString(QDate::fromJulianDay(julianDay), QLocale::ShortFormat);
}

// What QAccessible::installFactory asks for: null for whatever is not ours.
QAccessibleInterface* MakeAccessible(const QString& className, QObject* object) {
    auto* window = className == QLatin1String("MainWindow") ? qobject_cast<MainWindow*>(object) : nullptr;
    const auto* table = window ? window->findChild<QTableWidget*>("tableWidget") : nullptr;
    return table ? new CWindowAccessible(*window, *table) : nullptr;
}

}  // namespace

MainWindow::MainWindow(const boost::shared_ptr<IEnvironment>& environment, QWidget* parent)
    : QDialog(parent, Qt::Dialog), table_(SetUpForm()), environment_(environment) {
    connect(cancelButton, &QPushButton::clicked, this, &MainWindow::OnClose);
    connect(proxyButton, &QPushButton::clicked, this, &MainWindow::OnProxyOptions);
    connect(retryButton, &QPushButton::clicked, this, &MainWindow::OnCheckUpdates);
    connect(spinBox, &QSpinBox::valueChanged, this, &MainWindow::OnIntervalChanged);
    connect(checkBox, &QCheckBox::stateChanged, this, &MainWindow::OnCheckboxChanged);
    connect(&busyTimer_, &QTimer::timeout, this, &MainWindow::OnTooLong);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { table_.ScrollTo(now); });
    busyTimer_.setSingleShot(true);
    busyTimer_.setInterval(BUSY_AFTER);
}

QTableWidget& MainWindow::SetUpForm() {
    QAccessible::installFactory(&MakeAccessible);
    setupUi(this);
    return *tableWidget;
}

MainWindow::~MainWindow() {
    if (!controller_)
        return;
    controller_->SetCheckFinishedCallback({});
    controller_->SetCheckStartedCallback({});
    controller_->SetFailureCallback({});
}

void MainWindow::SetProductListController(const boost::shared_ptr<CProductListController>& controller) {
    controller_ = controller;
    controller_->SetCheckFinishedCallback(boost::bind(&MainWindow::OnProductChecked, this, _1));
    controller_->SetCheckStartedCallback(boost::bind(&MainWindow::OnCheckingProduct, this, _1));
    controller_->SetFailureCallback(boost::bind(&MainWindow::OnFetchFailed, this, _1));
}

void MainWindow::ShowProducts() {
    ShowSchedule();
    ShowDate(DateText(record_->GetLastChecked()));
    table_.Reset();
    const IProduct::List products = controller_->GetProducts();
    for (const Product& product : products)
        for (unsigned item = 0; item < product->GetItemCount(); ++item)
            AddProductRow(product, item);
    // Placing a button makes the table settle its widths, which pays only once all rows are there.
    for (const Product& product : products)
        for (unsigned item = 0; item < product->GetItemCount(); ++item)
            AddButtonIfWanted(product, item, product->GetRow(item));
}

// Showing the record does not change it. An administrator may have set more days than the form offers.
void MainWindow::ShowSchedule() {
    const QSignalBlocker quietBox(checkBox);
    const QSignalBlocker quietDays(spinBox);
    checkBox->setChecked(record_->GetCheckUpdates());
    spinBox->setMaximum(std::max(spinBox->maximum(), record_->GetInterval()));
    spinBox->setValue(record_->GetInterval());
}

// The form's minimum width is too narrow for some dates in large letters.
void MainWindow::ShowDate(const QString& date) {
    labelDate->setText(date);
    labelDate->setMinimumWidth(std::max(labelDate->minimumWidth(), labelDate->sizeHint().width()));
}

void MainWindow::OnConnectionError(const QString& message) {
    isFailureTold_ = true;
    statusLabel->setText(Cut(message));
}

// A product without rows, such as one that is not installed, has none that could be "N/A". Without a product
// it is the list that failed.
void MainWindow::OnFetchFailed(const QString& reason) {
    if (!current_ || current_->GetItemCount() > 0)
        OnConnectionError(reason);
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
        if (table_.HasRow(current_->GetRow(item)))
            table_.ShowBusy(current_->GetRow(item));
}

void MainWindow::reject() {
    if (controller_)
        controller_->StopCheck();
    environment_->StopWaiting();
    QDialog::reject();
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
    isFailureTold_ = false;
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
    if (!isFailureTold_ && IsUnchecked(*product))
        OnConnectionError(tr("%1: the server's answer cannot be read").arg(Cut(product->GetName())));
}

int MainWindow::AddProductRow(const Product& product, unsigned item) {
    const int row = table_.AddRow(product->GetName(), product->GetInstalledVersion(item).ToQString());
    product->SetRow(item, row);
    return row;
}

void MainWindow::AddButtonIfWanted(const Product& product, unsigned item, int row) {
    if (product->HasAction(item) && !table_.HasButton(row))
        table_.AddButton(row, boost::bind(&IProduct::RunAction, product, item));
}

void MainWindow::ShowCheckedItem(const Product& product, unsigned item) {
    const int known = product->GetRow(item);
    const int row = table_.HasRow(known) ? known : AddProductRow(product, item);
    // Some items know only after their check that something can be done about them.
    AddButtonIfWanted(product, item, row);
    if (product->IsChecked(item)) {
        const bool available = product->IsUpdateAvailable(item);
        table_.ShowLatest(row, product->GetLatestVersion(item).ToQString());
        table_.SetButton(row, product->GetActionTexts().value(available ? 1 : 0), available);
    } else {
        table_.ShowLatest(row, tr("N/A"));
    }
    if (product->IsHighlighted(item))
        table_.Highlight(row);
}
