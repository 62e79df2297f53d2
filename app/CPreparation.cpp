// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CPreparation.h"

#include "app/CSelfUpdate.h"
#include "app/settings/CPolicy.h"
#include "products/DescriptionFormat.h"

#include <QApplication>
#include <QUrl>

namespace {

SelfUpdateOffer OfferOf(const CSelfUpdate& update, bool isAwaited) {
    return {.installed = update.GetCurrentVersion().GetString().ToQString(),
            .offered = update.GetUpdateVersion().GetString().ToQString(),
            .host = QUrl(update.GetInstallerAddress().ToQString()).host(),
            .isAwaited = isAwaited};
}

}  // namespace

CPreparation::CPreparation(IAttendedEnvironment& environment,
                           const boost::shared_ptr<IDownloader>& downloader, bool isWatched)
    : environment_(environment),
      downloader_(downloader),
      isWatched_(isWatched),
      progress_(environment.MakeProgress([this] { Cancel(); })),
      interruption_([this] { Interrupt(); }) {}

bool CPreparation::SelfUpdate() {
    CSelfUpdate update(DescriptionFormat::OWN_FILE, environment_);
    update.SetDownloader(downloader_);
    update.SetProgressCallback([this](int done, int total) { progress_->SetBytes(done, total); });
    if (!IsOffered(update) || !environment_.ConfirmSelfUpdate(OfferOf(update, isWatched_)) ||
        !FetchInstaller(update))
        return false;
    environment_.StartDetached(update.GetInstallerPath().ToQString(),
                               {update.GetUpdateArgument().ToQString()});
    QCoreApplication::exit(0);
    return true;
}

bool CPreparation::IsOffered(CSelfUpdate& update) {
    Begin(IProgress::Task::LOOKING_FOR_PROGRAM);
    const bool offered = !CPolicy().noSelfUpdate.value_or(false) && update.LoadLocal() &&
                         !update.IsNoUpdates() && update.LoadRemote() && update.IsUpdateAvailable();
    if (offered)
        Pause();
    return offered;
}

bool CPreparation::FetchInstaller(CSelfUpdate& update) {
    isCancelled_ = false;
    progress_->Begin(IProgress::Task::FETCHING_INSTALLER);
    const bool isFetched = update.DownloadInstaller();
    progress_->Pause();
    if (!isFetched && !isCancelled_)
        environment_.WarnSelfUpdateFailed();
    return isFetched && !IsInterrupted();
}

void CPreparation::RefreshProductList(CProductListController& list) {
    list.SetDownloader(downloader_);
    if (IsInterrupted())
        return;
    Begin(IProgress::Task::LOOKING_FOR_LIST);
    list.UpdateProductList();
    Pause();
}

void CPreparation::Watch() {
    isWatched_ = true;
    if (task_)
        progress_->Begin(*task_);
}

void CPreparation::Begin(IProgress::Task task) {
    task_ = task;
    if (isWatched_)
        progress_->Begin(task);
}

void CPreparation::Pause() {
    task_.reset();
    progress_->Pause();
}

void CPreparation::Cancel() {
    isCancelled_ = true;
    downloader_->Cancel();
}

bool CPreparation::IsInterrupted() {
    interruption_.Deliver();
    return isInterrupted_;
}

void CPreparation::Interrupt() {
    isInterrupted_ = true;
    Cancel();
    QApplication::closeAllWindows();
}
