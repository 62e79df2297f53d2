// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The world around the program, behind one door, so that a test can put another world in its place.
#pragma once

#include "platform/CAtlString.h"
#include "platform/CVardoDirectoryPath.h"
#include "platform/IProgress.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <boost/function.hpp>
#include <memory>

// What the program asks of the machine and of the user. GUI thread only. The workflow owns the one
// environment of a process through a boost::shared_ptr and shares it with the products.
class IEnvironment {
public:
    virtual ~IEnvironment() = default;

    // Today's date, in local time.
    virtual QDate Today() const = 0;
    // The folder that installed software shares with the program: the parent of the executable's folder, then
    // "share".
    virtual CVardoDirectoryPath SharedDataFolder() const = 0;
    // Starts a program that outlives this one; false when it could not be started.
    virtual bool StartDetached(const QString& program, const QStringList& arguments) = 0;
    // Opens a page in the user's browser, behind a wait cursor; when no browser could be started the user is
    // told the address, and the result is false.
    virtual bool OpenWebPage(const CAtlString& address) = 0;
    // Asks whether the new version of the program may be installed now; true only for OK.
    virtual bool ConfirmSelfUpdate() = 0;
    // Tells the user that the new version could not be downloaded, or is not the maker's.
    virtual void WarnSelfUpdateFailed() = 0;
    // What tells the user about waiting; nothing is shown before its Begin. cancel is called, while the
    // program serves events, when the user has enough. Never null.
    virtual std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& cancel) = 0;
};
