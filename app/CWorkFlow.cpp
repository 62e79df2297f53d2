// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CWorkFlow.h"

#include "app/CPreparation.h"
#include "net/Downloader.h"
#include "net/ProxyAddress.h"
#include "net/dialog/ProxyAuth.h"
#include "platform/desktop/CInterruption.h"
#include "ui/MainWindow.h"
#include "ui/UnbiddenDialog.h"

#include <QApplication>
#include <QScopeGuard>
#include <QTimer>
#include <boost/make_shared.hpp>
#include <iostream>
#include <utility>

namespace {

// Most users never see it, and other copies of the program wait for its end.
constexpr std::chrono::minutes LONGEST_SILENT_CHECK{15};

// An X server, like window managers, gives the focus only to requests with a time after the last change of it
// (XSetInputFocus(3)), and Qt asks with the time of the last event that it saw. Setting an icon, even the
// same one, brings an event with the present time.
void Raise(QWidget& window) {
    constexpr int ICON_IS_SET_AFTER_MS = 50;
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.setWindowIcon(window.windowIcon());
    QTimer::singleShot(ICON_IS_SET_AFTER_MS, &window, &QWidget::activateWindow);
}

}  // namespace

CWorkFlow::CWorkFlow(const boost::shared_ptr<IAttendedEnvironment>& environment,
                     const boost::shared_ptr<IDownloader>& downloader)
    : downloader_(downloader),
      productList_(boost::make_shared<CProductListController>(environment)),
      proxyHandler_(boost::make_shared<ProxyHandlerBase>()),
      recordKeeper_(boost::make_shared<CRecordKeeper>()),
      environment_(environment) {
    proxyHandler_->SetDialog(boost::make_shared<CProxyDialog>());
    downloader_->SetProxyHandler(proxyHandler_);
}

bool CWorkFlow::Initialize(const CCmdLineContext& context) {
    TakeProxy(context);
    productList_->LoadProductList();
    proxyHandler_->SetCredentials(context.userName, context.password);
    return recordKeeper_->Load();
}

void CWorkFlow::TakeProxy(const CCmdLineContext& context) {
    if (!context.overrideProxy) {
        proxyHandler_->LoadProxySettings();
        return;
    }
    const ProxyAddress proxy = ParseProxyAddress(context.proxy).value_or(ProxyAddress{.host = context.proxy});
    if (proxy.port)
        proxyHandler_->SetProxy(proxy.host, *proxy.port);
    else
        proxyHandler_->SetProxyHost(proxy.host);
}

bool CWorkFlow::IsCheckDue() const {
    return recordKeeper_->IsCheckDue(environment_->Today());
}

bool CWorkFlow::SelfUpdate() {
    return CPreparation(*environment_, downloader_, false).SelfUpdate();
}

int CWorkFlow::CheckInteractive(const CCmdLineContext& context) {
    Initialize(context);
    proxyHandler_->SetInteractive(true);
    if (Prepare(true))
        return 0;
    // A signal, as at the end of a session, closes the window; the settings are stored even so.
    const CInterruption interruption(&QApplication::closeAllWindows);
    MainWindow window(environment_);
    Connect(window);
    QTimer::singleShot(0, &window, &MainWindow::OnCheckUpdates);
    window.exec();
    RecordSuccess();
    proxyHandler_->SaveProxySettings();
    recordKeeper_->Save();
    return 0;
}

int CWorkFlow::CheckSilently(const CCmdLineContext& context) {
    Initialize(context);
    proxyHandler_->SetInteractive(false);
    if (!IsCheckDue() || Prepare(false))
        return 0;
    bool isInterrupted = false;
    // It lasts until the settings are stored.
    CInterruption interruption([&] {
        isInterrupted = true;
        productList_->StopCheck();
        QApplication::closeAllWindows();
    });
    productList_->FindInstalled();
    productList_->BeginFetching();
    MainWindow window(environment_);
    Connect(window);
    window.ShowProducts();
    const bool isNews = CheckBehind(window);
    interruption.Deliver();
    if (isNews && !isInterrupted) {
        proxyHandler_->SetInteractive(true);
        window.ShowOutcome();
        if (isActivated_)
            window.exec();
        else
            ExecUnbidden(window);
    }
    recordKeeper_->Save();
    return 0;
}

bool CWorkFlow::CheckBehind(MainWindow& window) {
    hidden_ = &window;
    if (isActivated_)
        Activate();
    productList_->SetTimeLimit(LONGEST_SILENT_CHECK);
    productList_->CheckForUpdates();
    productList_->SetTimeLimit({});
    RecordSuccess();
    window.SetChecking(false);
    const bool wasShown = std::exchange(hidden_, nullptr) == nullptr;
    return wasShown ? window.isVisible() : productList_->IsAnyUpdateAvailable();
}

void CWorkFlow::Activate() {
    isActivated_ = true;
    if (preparation_)
        preparation_->Watch();
    if (MainWindow* window = std::exchange(hidden_, nullptr)) {
        proxyHandler_->SetInteractive(true);
        window->SetChecking(true);
        window->setModal(true);
        window->show();
    }
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QDialog*>(window))
            Raise(*window);
    if (QWidget* asking = QApplication::activeModalWidget())
        Raise(*asking);
}

int CWorkFlow::ReportParameterError(const CCmdLineContext& /*context*/) {
    std::cout << "error in parameters" << std::endl;
    return 1;
}

bool CWorkFlow::Prepare(bool isWatched) {
    Downloader::RemoveStaleFiles();
    CPreparation preparation(*environment_, downloader_, isWatched);
    preparation_ = &preparation;
    const auto forget = qScopeGuard([this] { preparation_ = nullptr; });
    if (preparation.SelfUpdate())
        return true;
    preparation.RefreshProductList(*productList_);
    return preparation.IsInterrupted();
}

void CWorkFlow::Connect(MainWindow& window) const {
    window.SetProductListController(productList_);
    window.SetProxyHandler(proxyHandler_);
    window.SetRecordKeeper(recordKeeper_);
}

void CWorkFlow::RecordSuccess() {
    if (productList_->GetLastCheckResult())
        recordKeeper_->NoteCheck(environment_->Today());
}
