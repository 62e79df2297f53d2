// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/VerdictText.h"

QString VerdictText(Verdict verdict) {
    switch (verdict) {
        case Verdict::NOT_READ:
            return "it was not read";
        case Verdict::MISSING:
            return "there is no such file";
        case Verdict::NOT_FETCHED:
            return "nothing was fetched";
        case Verdict::NO_XML:
            return "it cannot be read, or is no well-formed XML";
        case Verdict::OTHER_NAME:
            return "its name goes on with something else than a digit after the base name";
        case Verdict::KNOWN_VERSION:
            return "an earlier file has the same version";
        case Verdict::NO_PRODUCT:
            return "it has no product element";
        case Verdict::NO_VERSION:
            return "it has no CurrentVersion";
        case Verdict::NO_FOLDER:
            return "it has no address of the folder on the web";
        case Verdict::NO_FILE_NAME:
            return "it has no name of the file on the web";
        case Verdict::NOT_FOR_CLIENTS:
            return "the Location of its root is not Server";
        case Verdict::NO_NOTIFICATION:
            return "its root is no Notification";
        case Verdict::NO_TEXT:
            return "it has no text in any language";
        case Verdict::NO_PAGE:
            return "it has no WebPage";
        case Verdict::NO_DATES:
            return "its StartDate or StopDate is no date";
        case Verdict::TOO_EARLY:
            return "it is shown only after its StartDate";
        case Verdict::OVER:
            return "it is shown only before its StopDate";
        case Verdict::NO_BOARD:
            return "it is for machines with board software below 10.0.0.0";
        case Verdict::NO_RECORD:
            return "the settings of the notebook software have no record of it";
        case Verdict::NO_TOOL:
            return "its record in the settings has no AppPath";
        case Verdict::NO_MANIFEST:
            return "its record in the settings has no ImsManifestXml";
        case Verdict::NO_CATEGORY:
            return "it has no categories";
        case Verdict::UNKNOWN_CATEGORIES:
            return "none of its categories is installed";
        case Verdict::COUNTS:
            break;
    }
    return {};
}
