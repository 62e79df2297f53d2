// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The window of a check: the products, their versions and what can be done about them.
#pragma once

#include "app/settings/CRecordKeeper.h"
#include "net/ProxyHandlerBase.h"
#include "platform/desktop/IEnvironment.h"
#include "products/CProductListController.h"
#include "ui/CCheckOutcome.h"
#include "ui/CProductTable.h"
#include "ui/CProgressWindow.h"
#include "ui/CRowMenu.h"

#include <QDialog>
#include <QList>
#include <QTimer>
#include <boost/shared_ptr.hpp>

#include "ui_MainWindow.h"

// Shows one row per item of each product, and runs the check. GUI thread only. The controller, the proxy
// handler and the record are shared with the workflow and must be set before the window is used; the window
// changes the record in memory only. Closing it while a check runs, or while a row's button waits for a
// browser, stops both; exec() returns when they have ended, soon after.
class MainWindow : public QDialog, private Ui::MainWindow {
    Q_OBJECT

public:
    // How long a product's check may last before its rows show a busy bar, in milliseconds.
    static constexpr int BUSY_AFTER = CProgressWindow::PATIENCE.count();

    explicit MainWindow(const boost::shared_ptr<IEnvironment>& environment, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The window hears of the controller's checks for as long as it lives.
    void SetProductListController(const boost::shared_ptr<CProductListController>& controller);
    // It must be there before a check, and before the user asks for the connection options.
    void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) { proxyHandler_ = handler; }
    // Restores the window's place and size.
    void SetRecordKeeper(const boost::shared_ptr<CRecordKeeper>& record);
    // Lists what the controller holds, and shows the record.
    void ShowProducts();
    // Shows the summary of a check that has ended, with the rows that it did not reach as failures.
    void ShowOutcome();
    // Disables another check and the connection options while a check runs.
    void SetChecking(bool isChecking);

public slots:
    // Shows why a product could not be checked.
    void OnConnectionError(const QString& message);
    // Lets the user edit the connection options.
    void OnProxyOptions();
    // Loads the list again, looks for what is installed and checks it; returns when all that is done.
    void OnCheckUpdates();
    void OnClose();
    // Keep what the user sets: a Qt::CheckState, and days.
    void OnCheckboxChanged(int state);
    void OnIntervalChanged(int value);
    // Shows busy bars in the rows of the product that is being checked.
    void OnTooLong();
    // Every way to close the window leads here.
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    // Enter presses the button that has the focus, and never another one.
    void keyPressEvent(QKeyEvent* event) override;

private:
    using Product = boost::shared_ptr<IProduct>;
    struct Row {
        Product product;
        unsigned item = 0;
        bool isChecked = false;
    };

    void OnCheckingProduct(const Product& product);
    void OnProductChecked(const Product& product);
    void OnFetchFailed(const QString& reason);
    // Builds the form, and gives its table.
    QTableWidget& SetUpForm();
    void ShowSchedule();
    // Disables a control that the administrator has settled, and says so in its tool tip.
    static void ShowFixed(QWidget& control, bool isFixed);
    void ShowDate(const QString& date);
    // Widens the visible window so that the longest name fits; a width that the user chose stays.
    void MakeRoomForNames();
    // The width of a window that neither the user nor MakeRoomForNames has changed.
    int OwnWidth() const;
    // Keeps the place for the next run, but with the own width in place of one that MakeRoomForNames gave.
    void StorePlace();
    // Says in the tool tip of the last check's date when a silent check is due.
    void ShowNextCheck();
    void AddRowMenu();
    CRowMenu::Item ItemOf(int row) const;
    QString AllText() const;
    void Explain(const CRowMenu::Item& row);
    void TellUnreadable(const IProduct& product);
    void ShowReasons(const IProduct& product, unsigned item);
    void AddRow(const Product& product, unsigned item);
    // Builds the table's rows from rows_.
    void FillTable();
    void ShowRow(const Row& row);
    void AddButtonIfWanted(const Row& row);
    void ShowCheckedRow(const Row& row);
    void OnRowChecked(Row& row);

    CProductTable table_;
    // What the table shows, or will show: its rows are built when the window is visible, since most silent
    // checks end without it.
    QList<Row> rows_;
    // The table shows rows_.
    bool isTableFilled_ = true;
    boost::shared_ptr<CProductListController> controller_;
    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
    boost::shared_ptr<CRecordKeeper> record_;
    QTimer busyTimer_;
    Product current_;
    CCheckOutcome outcome_;
    // True when the reason why the current product cannot be checked is shown.
    bool isFailureTold_ = false;
    // The form's, which SetUpForm has built.
    const int formWidth_ = width();
    // What MakeRoomForNames has given; 0 before. Another width is the user's choice, as is one that differs
    // from the own width when the window opens.
    int givenWidth_ = 0;
    boost::shared_ptr<IEnvironment> environment_;
};
