// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/MainWindow.h"

#include "platform/text/PrintableText.h"
#include "products/CExplanation.h"
#include "ui/CWhyDialog.h"
#include "ui/CWindowAccessible.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <QUrl>
#include <algorithm>
#include <boost/bind.hpp>
#include <iostream>

namespace {

void PrintProgress(const char* before, const IProduct& product, const char* after) {
    std::cout << before << PrintableNarrow(CAtlString(product.GetName())) << after << std::endl;
}

// True when it has items and all of them are unchecked.
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

// The factory for QAccessible::installFactory; null for other classes.
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
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        // A window that becomes active keeps its place.
        if (isAncestorOf(before))
            table_.ScrollTo(now);
    });
    AddRowMenu();
    busyTimer_.setSingleShot(true);
    // Other timers may fire 5 % early.
    busyTimer_.setTimerType(Qt::PreciseTimer);
    busyTimer_.setInterval(BUSY_AFTER);
}

QTableWidget& MainWindow::SetUpForm() {
    QAccessible::installFactory(&MakeAccessible);
    setupUi(this);
    // The window's frame needs some room, too.
    resize(size().boundedTo(screen()->availableGeometry().size() - QSize(2, 40)));
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

void MainWindow::SetRecordKeeper(const boost::shared_ptr<CRecordKeeper>& record) {
    record_ = record;
    restoreGeometry(record->GetWindowPlace());
}

void MainWindow::ShowProducts() {
    ShowSchedule();
    ShowDate(DateText(record_->GetLastChecked()));
    rows_.clear();
    isTableFilled_ = false;
    for (const Product& product : controller_->GetProducts())
        for (unsigned item = 0; item < product->GetItemCount(); ++item)
            AddRow(product, item);
    if (isVisible())
        FillTable();
}

void MainWindow::FillTable() {
    isTableFilled_ = true;
    table_.Reset();
    for (const Row& row : rows_)
        ShowRow(row);
    // Placing a button makes the table settle its widths, which pays only once all rows are there.
    for (const Row& row : rows_)
        AddButtonIfWanted(row);
    for (const Row& row : rows_)
        if (row.isChecked)
            ShowCheckedRow(row);
    if (!busyTimer_.isActive())
        OnTooLong();
    QTimer::singleShot(0, this, &MainWindow::MakeRoomForNames);
}

void MainWindow::MakeRoomForNames() {
    const bool isUsers = width() != (givenWidth_ > 0 ? givenWidth_ : OwnWidth());
    if (isUsers || !isVisible() || !table_.HasRow(0))
        return;
    const QRect free = screen()->availableGeometry();
    givenWidth_ = std::min(width() + table_.WidthThatNamesLack(free.width() / 2), free.width());
    // A window that has room enough stays where the user has put it.
    if (givenWidth_ == width())
        return;
    resize(givenWidth_, height());
    // A window that is too wide for the screen shows the names.
    const int left = x() - std::max(0, frameGeometry().right() - free.right());
    move(isLeftToRight() ? std::max(left, free.left()) : left, y());
}

int MainWindow::OwnWidth() const {
    return std::max(formWidth_, minimumSizeHint().width());
}

void MainWindow::StorePlace() {
    if (width() == givenWidth_)
        resize(OwnWidth(), height());
    record_->SetWindowPlace(saveGeometry());
}

// Showing the record does not change it. An administrator may have set more days than the form offers.
void MainWindow::ShowSchedule() {
    const QSignalBlocker quietBox(checkBox);
    const QSignalBlocker quietDays(spinBox);
    checkBox->setChecked(record_->GetCheckUpdates());
    spinBox->setEnabled(record_->GetCheckUpdates());
    spinBox->setMaximum(std::max(spinBox->maximum(), record_->GetInterval()));
    spinBox->setValue(record_->GetInterval());
    ShowNextCheck();
    ShowFixed(*checkBox, record_->GetPolicy().checkUpdates.has_value());
    ShowFixed(*spinBox, record_->GetPolicy().interval.has_value());
}

void MainWindow::ShowFixed(QWidget& control, bool isFixed) {
    if (!isFixed)
        return;
    control.setEnabled(false);
    control.setToolTip(tr("Your administrator has set this"));
}

// The form's minimum width is too narrow for some dates in large letters.
void MainWindow::ShowDate(const QString& date) {
    labelDate->setText(date);
    labelDate->setMinimumWidth(std::max(labelDate->minimumWidth(), labelDate->sizeHint().width()));
}

void MainWindow::ShowNextCheck() {
    const QDate day = QDate::fromJulianDay(record_->GetNextCheck());
    QString tip = tr("The next automatic check is due.");
    if (!record_->GetCheckUpdates())
        tip = tr("Automatic checks are off.");
    else if (day > environment_->Today())
        tip = tr("The next automatic check is due on %1.")
                  .arg(QLocale::system().toString(day, QLocale::ShortFormat));
    for (QLabel* text : {label_2, labelDate}) {
        text->setToolTip(tip);
        text->setAccessibleDescription(tip);
    }
}

void MainWindow::ShowOutcome() {
    // A check that took too long has left out the rest.
    for (Row& row : rows_) {
        if (row.isChecked)
            continue;
        outcome_.OnFailed(*row.product, tr("No answer"), environment_->Now());
        OnRowChecked(row);
    }
    statusLabel->setText(Cut(outcome_.Summary(controller_->GetProducts())));
    ShowNextCheck();
}

void MainWindow::OnConnectionError(const QString& message) {
    isFailureTold_ = true;
    statusLabel->setText(Cut(message));
}

// A product without rows, such as one that is not installed, cannot show "N/A". Without a product, the list
// failed.
void MainWindow::OnFetchFailed(const QString& reason) {
    if (!current_) {
        outcome_.OnListRefused(reason);
        OnConnectionError(reason);
    } else if (current_->GetItemCount() > 0) {
        outcome_.OnFailed(*current_, reason, environment_->Now());
        OnConnectionError(current_->GetName() + ": " + reason);
    }
}

void MainWindow::OnProxyOptions() {
    proxyHandler_->ShowProxyOptionsDialog(this);
}

void MainWindow::OnCheckUpdates() {
    std::cout << std::endl;
    proxyHandler_->SetInteractive(true);
    statusLabel->clear();
    outcome_.Forget();
    const bool hadFocus = retryButton->hasFocus();
    SetChecking(true);
    controller_->LoadProductList();
    controller_->FindInstalled();
    ShowProducts();
    controller_->CheckForUpdates();
    if (controller_->GetLastCheckResult())
        record_->NoteCheck(environment_->Today());
    ShowOutcome();
    SetChecking(false);
    // The disabled button has passed its focus on to the table.
    if (hadFocus && focusWidget() == tableWidget)
        retryButton->setFocus();
    // Versions may have widened their columns.
    MakeRoomForNames();
}

void MainWindow::SetChecking(bool isChecking) {
    retryButton->setEnabled(!isChecking);
    proxyButton->setEnabled(!isChecking);
}

void MainWindow::OnClose() {
    reject();
}

void MainWindow::OnCheckboxChanged(int state) {
    record_->SetCheckUpdates(state == Qt::Checked);
    spinBox->setEnabled(state == Qt::Checked && !record_->GetPolicy().interval);
    ShowNextCheck();
}

void MainWindow::OnIntervalChanged(int value) {
    record_->SetInterval(value);
    ShowNextCheck();
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
    if (record_ && isVisible())
        StorePlace();
    environment_->StopWaiting();
    QDialog::reject();
}

void MainWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!isTableFilled_)
        FillTable();
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
    if (!isFailureTold_ && IsUnchecked(*product))
        TellUnreadable(*product);
    for (unsigned item = 0; item < product->GetItemCount(); ++item) {
        // Some items exist only after their check.
        const int known = product->GetRow(item);
        if (known < 0 || known >= rows_.size())
            AddRow(product, item);
        OnRowChecked(rows_[product->GetRow(item)]);
    }
}

void MainWindow::OnRowChecked(Row& row) {
    row.isChecked = true;
    if (isTableFilled_)
        ShowCheckedRow(row);
}

void MainWindow::AddRow(const Product& product, unsigned item) {
    product->SetRow(item, static_cast<int>(rows_.size()));
    rows_.push_back({product, item});
    if (isTableFilled_)
        ShowRow(rows_.back());
}

void MainWindow::ShowRow(const Row& row) {
    table_.AddRow(row.product->GetName(), row.product->GetInstalledVersion(row.item).ToQString());
}

void MainWindow::AddButtonIfWanted(const Row& row) {
    const int place = row.product->GetRow(row.item);
    if (row.product->HasAction(row.item) && !table_.HasButton(place))
        table_.AddButton(place, boost::bind(&IProduct::RunAction, row.product, row.item));
}

void MainWindow::ShowCheckedRow(const Row& row) {
    const auto& [product, item, isChecked] = row;
    const int place = product->GetRow(item);
    // Some items know only after their check that something can be done about them.
    AddButtonIfWanted(row);
    if (product->IsChecked(item)) {
        const bool available = product->IsUpdateAvailable(item);
        table_.ShowLatest(place, product->GetLatestVersion(item).ToQString());
        table_.SetButton(place, product->GetActionTexts().value(available ? 1 : 0), available);
    } else {
        table_.ShowLatest(place, tr("N/A"));
    }
    ShowReasons(*product, item);
    if (product->IsHighlighted(item))
        table_.Highlight(place);
}

// Nothing else has told why: the check was stopped, or the product refuses the file.
void MainWindow::TellUnreadable(const IProduct& product) {
    const QString host = QUrl(product.GetCheckAddress().ToQString()).host();
    const QString what =
        controller_->IsStopped() ? tr("No answer") : tr("The server's answer cannot be read");
    const QString reason = host + ": " + what;
    outcome_.OnFailed(product, reason, environment_->Now());
    OnConnectionError(product.GetName() + ": " + reason);
}

void MainWindow::ShowReasons(const IProduct& product, unsigned item) {
    table_.ShowReasons(product.GetRow(item), outcome_.WhyNotAvailable(product, item),
                       outcome_.Why(product, item));
}

void MainWindow::AddRowMenu() {
    const auto skippingChanged = [this](const CRowMenu::Item& row) {
        if (ItemOf(row.product->GetRow(row.item)).product != row.product)
            return;
        ShowReasons(*row.product, row.item);
        // A running check shows its summary when it ends.
        if (retryButton->isEnabled())
            ShowOutcome();
    };
    new CRowMenu(*tableWidget, {.itemOf = boost::bind(&MainWindow::ItemOf, this, _1),
                                .textOf = boost::bind(&CProductTable::RowText, &table_, _1),
                                .allText = boost::bind(&MainWindow::AllText, this),
                                .explain = boost::bind(&MainWindow::Explain, this, _1),
                                .skippingChanged = skippingChanged});
}

CRowMenu::Item MainWindow::ItemOf(int row) const {
    const Row found = rows_.value(row);
    return {found.product, found.item};
}

QString MainWindow::AllText() const {
    QStringList rows;
    for (int row = 0; row < tableWidget->rowCount(); ++row)
        rows << table_.RowText(row);
    return rows.join('\n');
}

void MainWindow::Explain(const CRowMenu::Item& row) {
    const IProduct& product = *row.product;
    const CExplanation* explanation = controller_->GetExplanation(product);
    const QString text = ExplanationText({{"name", product.GetName()},
                                          {"key", product.GetKey().ToQString()},
                                          {"explain", explanation ? explanation->ToJson() : QJsonObject()}});
    (new CWhyDialog(Cut(product.GetName()), Cut(outcome_.Why(product, row.item)), text, this))->open();
}
