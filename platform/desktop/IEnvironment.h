// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The world around the program, behind one door, so that a test can put another world in its place.
#pragma once

#include "platform/files/CFolderListing.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/text/CAtlString.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <memory>

// What products ask of the machine. GUI thread only; the environment of a process is shared through a
// boost::shared_ptr. Nothing can be started or opened unless a derived class does it.
class IEnvironment {
public:
    virtual ~IEnvironment() = default;

    // Today's date, in local time.
    virtual QDate Today() const { return QDate::currentDate(); }
    // The time of day, in local time.
    virtual QTime Now() const { return QTime::currentTime(); }
    // The folder that installed software shares with the program: "share" beside that of the executable.
    virtual CVardoDirectoryPath SharedDataFolder() const = 0;

    // Starts a program that outlives this one; false when it could not be started.
    virtual bool StartDetached(const QString& /*program*/, const QStringList& /*arguments*/) { return false; }
    // Opens a product's page in the user's browser, behind a wait cursor, and serves events meanwhile. When
    // there is no address, or no browser could be started, the user is told so, and the result is false.
    virtual bool OpenWebPage(const CAtlString& /*address*/, const QString& /*product*/) { return false; }
    // Lets every OpenWebPage that is under way return true soon; the browser starts all the same. Call it
    // from an event inside OpenWebPage.
    virtual void StopWaiting() {}

    // The files of SharedDataFolder(): the lent listing, or else a new one.
    std::shared_ptr<const CFolderListing> SharedFiles() const {
        return lent_ ? lent_ : std::make_shared<const CFolderListing>(SharedDataFolder());
    }
    // Lends a listing for a pass over many products, so that the folder is read once; null ends that.
    void LendSharedFiles(const std::shared_ptr<const CFolderListing>& files) { lent_ = files; }

private:
    std::shared_ptr<const CFolderListing> lent_;
};
