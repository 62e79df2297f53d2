// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The entry point.
#include "app/CActivationServer.h"
#include "app/CApplicationFactory.h"
#include "app/CSingleInstanceLock.h"
#include "i18n/Language.h"
#include "i18n/startup/InstallLanguage.h"
#include "platform/desktop/StandardStreams.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QSessionManager>
#include <QStyleFactory>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>

#include <unistd.h>

namespace {

constexpr char LOCK_PROJECT = 'q';

// Empty variables count as unset, as they do in Qt.
bool IsDisplayNamed() {
    const auto isSet = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
}

// Qt would abort when it cannot open the display; the program's status is always 0.
void PrintAndEnd(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    std::cerr << text.toStdString() << std::endl;
    if (type == QtFatalMsg)
        _exit(0);
}

// Qt calls exit(1) when it loses an X display; the program's status is 0. Its plugin for Wayland calls
// _exit(1), which leaves the program no say.
void EndWithoutError(int status, void* /*unused*/) {
    if (status != 0)
        _exit(0);
}

std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv, bool gui) {
    if (!gui)
        return std::make_unique<QCoreApplication>(argc, argv);
    qInstallMessageHandler(&PrintAndEnd);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(nullptr);
    on_exit(&EndWithoutError, nullptr);
    // Else a desktop that saves its session would open the window at each login.
    QObject::connect(qApp, &QGuiApplication::saveStateRequest, qApp,
                     [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); });
    return application;
}

// To detect a file's format, Qt would load all its image plugins, which takes 3 of the start's 110 ms on a
// slow machine.
QIcon ReadIcon() {
    QImageReader reader(":/images/update.png", "png");
    reader.setAutoDetectImageFormat(false);
    return QIcon(QPixmap::fromImageReader(&reader));
}

void DressUp() {
    const bool plastique = QStyleFactory::keys().contains("plastique", Qt::CaseInsensitive);
    QApplication::setStyle(plastique ? "plastique" : "fusion");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(ReadIcon());
}

void RunAction(CApplicationFactory& factory) {
    if (factory.IsGuiEnabled())
        DressUp();
    const CActivationServer server(QCoreApplication::applicationFilePath(), [&] { factory.Activate(); });
    factory.Run();
    // One turn of the event loop delivers what is still pending, deferred deletions above all.
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
}

// Runs the action unless another copy runs; then it returns false.
bool RunAlone(CApplicationFactory& factory) {
    // In UTF-8, as the file system has it.
    const QByteArray executable = QCoreApplication::applicationFilePath().toUtf8();
    const CSingleInstanceLock lock(executable.constData(), LOCK_PROJECT);
    if (lock.IsHeld())
        RunAction(factory);
    return lock.IsHeld();
}

// Runs the action that the command line asks for, or says why it cannot.
void RunApplication(int argc, char** argv) {
    CApplicationFactory factory;
    factory.Parse(argc, argv);
    if (factory.IsGuiEnabled() && !IsDisplayNamed()) {
        std::cerr << "VARDO Product Update needs a display, and neither DISPLAY nor WAYLAND_DISPLAY is set; "
                     "VARDOUpdateReport checks without one."
                  << std::endl;
        return;
    }
    const auto application = MakeApplication(argc, argv, factory.IsGuiEnabled());
    SetLocaleOverride(factory.GetLocale().ToQString());
    InstallLanguage("VARDOProductUpdate", qobject_cast<QApplication*>(application.get()), true);
    // A copy that has just begun does not listen yet, and one that ends never will.
    const QDeadlineTimer patience(std::chrono::seconds(1));
    while (!RunAlone(factory)) {
        const bool isDone = !factory.IsInteractive() ||
                            ActivateRunningCopy(QCoreApplication::applicationFilePath()) ||
                            patience.hasExpired();
        if (isDone) {
            std::cerr << "VARDO Product Update is already running." << std::endl;
            return;
        }
        QThread::msleep(50);
    }
}

}  // namespace

int main(int argc, char** argv) {
    SecureStandardStreams();
    RunApplication(argc, argv);
    return 0;
}
