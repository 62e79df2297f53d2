// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/RunApplication.h"

#include "app/CApplicationFactory.h"
#include "app/CSingleInstanceLock.h"
#include "i18n/InstallLanguage.h"
#include "i18n/Language.h"
#include "platform/ThreadEventLoops.h"

#include <QApplication>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QStyleFactory>
#include <QTimer>
#include <iostream>
#include <memory>
#include <thread>

#include <fontconfig/fontconfig.h>

namespace {

constexpr char LOCK_PROJECT = 'q';

std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv, bool gui) {
    if (gui)
        return std::make_unique<QApplication>(argc, argv);
    return std::make_unique<QCoreApplication>(argc, argv);
}

// Fontconfig reads its configuration while the display is opened: a fifth of all instructions of a start,
// which the first text would otherwise wait for. FcInit may be called from any thread.
std::jthread StartReadingFonts(bool gui) {
    return gui ? std::jthread([] { FcInit(); }) : std::jthread();
}

// A reader that is told the format does not load each plugin for others to ask whether the picture is one of
// those, with the libraries that they need.
QIcon MakeWindowIcon() {
    QImageReader reader(":/images/update.png", "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

void DressUp() {
    const bool plastique = QStyleFactory::keys().contains("plastique", Qt::CaseInsensitive);
    QApplication::setStyle(plastique ? "plastique" : "fusion");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(MakeWindowIcon());
}

void RunAction(CApplicationFactory& factory, std::jthread& fonts) {
    if (factory.IsGuiEnabled()) {
        DressUp();
        // From here on there are texts; whoever asks for a font now would read the configuration once more.
        fonts.join();
    }
    factory.Run();
    // One turn of the event loop delivers what is still pending, deferred deletions above all.
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
}

}  // namespace

void RunApplication(int argc, char** argv) {
    DoWithoutGLibInThreads();
    CApplicationFactory factory;
    factory.Parse(argc, argv);
    std::jthread fonts = StartReadingFonts(factory.IsGuiEnabled());
    const auto application = MakeApplication(argc, argv, factory.IsGuiEnabled());
    SetLocaleOverride(factory.GetLocale().ToQString());
    InstallLanguage("VARDOProductUpdate", qobject_cast<QApplication*>(application.get()), true);
    // In UTF-8, as the file system has it.
    const QByteArray executable = QCoreApplication::applicationFilePath().toUtf8();
    const CSingleInstanceLock lock(executable.constData(), LOCK_PROJECT);
    if (lock.IsHeld())
        RunAction(factory, fonts);
    else
        std::cerr << "VARDO Product Update is already running." << std::endl;
}
