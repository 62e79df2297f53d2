// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The window of a check: the products, their versions and what can be done about them.
#pragma once

#include "app/settings/CRecordKeeper.h"
#include "net/ProxyHandlerBase.h"
#include "net/Qtfier.h"
#include "platform/IEnvironment.h"
#include "products/CProductListController.h"

#include <QDialog>
#include <QTimer>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <vector>

#include "ui_MainWindow.h"

// Shows one row per item of each product, and runs the check. GUI thread only. The controller, the proxy
// handler and the record are shared with the workflow and must be set before the window is used; the window
// changes the record in memory only. Closing it while a check runs is safe: the check ends behind it, and
// exec() returns after that.
class MainWindow : public QDialog, private Ui::MainWindow {
    Q_OBJECT

public:
    // How long a product's check may last before its rows show a busy bar, in milliseconds.
    static constexpr int BUSY_AFTER = 700;

    explicit MainWindow(const boost::shared_ptr<IEnvironment>& environment, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The window hears of the controller's checks for as long as it lives.
    void SetProductListController(const boost::shared_ptr<CProductListController>& controller);
    void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) { proxyHandler_ = handler; }
    void SetRecordKeeper(const boost::shared_ptr<CRecordKeeper>& record) { record_ = record; }
    // Builds the rows of what the controller holds, and shows the record.
    void ShowProducts();

public slots:
    void OnConnectionError(QString message);
    void OnProxyOptions();
    // Loads the list again, looks for what is installed and checks it; returns when all that is done.
    void OnCheckUpdates();
    void OnClose();
    void OnCheckboxChanged(int state);
    void OnIntervalChanged(int value);
    void OnTooLong();

protected:
    void closeEvent(QCloseEvent* event) override;
    // Enter presses the button that has the focus, and never another one.
    void keyPressEvent(QKeyEvent* event) override;

private:
    using RowAction = boost::function<bool()>;
    using Product = boost::shared_ptr<IProduct>;

    void OnCheckingProduct(const Product& product);
    void OnProductChecked(const Product& product);
    void OnRowButton(int row, const RowAction& action);

    void ResetTable();
    int AddRow(bool withButton, const RowAction& action);
    void AddButton(int row, const RowAction& action);
    int AddProductRow(const Product& product, unsigned item);
    int AddItemRow(const Product& product, unsigned item);
    void FillInstalled(const Product& product, unsigned item);
    void ShowCheckedItem(const Product& product, unsigned item);
    void ShowLatest(const Product& product, unsigned item, int row);
    void Highlight(int row);
    bool HasRow(const Product& product, unsigned item) const;
    QPushButton* RowButton(int row) const;

    std::vector<boost::shared_ptr<Qtfier>> rowActions_;
    boost::shared_ptr<CProductListController> controller_;
    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
    boost::shared_ptr<CRecordKeeper> record_;
    QBrush highlight_;
    QTimer busyTimer_;
    Product current_;
    boost::shared_ptr<IEnvironment> environment_;
};
