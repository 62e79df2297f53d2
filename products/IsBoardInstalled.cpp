// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/Notification.h"

#include "products/CProductVersions.h"

bool IsBoardInstalled(const boost::shared_ptr<IEnvironment>& environment) {
    // The board software is found as any product is, but no list needs to name it.
    class BoardHack : public CProductVersions {
    public:
        explicit BoardHack(const boost::shared_ptr<IEnvironment>& world) : CProductVersions(world) {
            SetBaseName(L"SoftwareUpdateVBS");
        }
    };

    BoardHack board(environment);
    if (!board.FindInstalled())
        return false;
    const CVersionString installed(board.GetInstalledVersion(0));
    return installed.IsLess(CVersionString(L"10.0.0.0"));
}
