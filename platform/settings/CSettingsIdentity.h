// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whose settings file the settings store opens.
#pragma once

#include <QString>

// A scope: while it lives, the application bears another organisation name, organisation domain and
// application name, and the settings store opens the file that belongs to them. The destructor restores all
// three. Scopes may nest. GUI thread only; what is switched is visible to the whole process.
class CSettingsIdentity {
public:
    CSettingsIdentity(const QString& organization, const QString& domain, const QString& application);
    ~CSettingsIdentity();
    CSettingsIdentity(const CSettingsIdentity&) = delete;
    CSettingsIdentity& operator=(const CSettingsIdentity&) = delete;

    // The organisation of QCoreApplication; "VARDO Technologies" when that is empty or "vardotech".
    static QString Organization();
    // The application whose file is in use; empty for the file of the whole organisation. QCoreApplication
    // returns the executable's file name when no name was set, or an empty one; that counts as empty here.
    static QString Application();

private:
    QString previousOrganization_;
    QString previousDomain_;
    QString previousApplication_;
};
