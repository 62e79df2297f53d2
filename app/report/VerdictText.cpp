// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/report/VerdictText.h"

#include <map>

QString VerdictText(Verdict verdict) {
    static const std::map<Verdict, const char*> texts{
        {Verdict::NOT_READ, "it was not read"},
        {Verdict::COUNTS, ""},
        {Verdict::MISSING, "there is no such file"},
        {Verdict::NOT_FETCHED, "nothing was fetched"},
        {Verdict::NO_XML, "it cannot be read, or is no well-formed XML"},
        {Verdict::OTHER_NAME, "its name goes on with something else than a digit after the base name"},
        {Verdict::KNOWN_VERSION, "an earlier file has the same version"},
        {Verdict::NO_PRODUCT, "it has no product element"},
        {Verdict::NO_VERSION, "it has no CurrentVersion"},
        {Verdict::NO_FOLDER, "it has no address of the folder on the web"},
        {Verdict::NO_FILE_NAME, "it has no name of the file on the web"},
        {Verdict::NOT_FOR_CLIENTS, "the Location of its root is not Server"},
        {Verdict::NO_NOTIFICATION, "its root is no Notification"},
        {Verdict::NO_TEXT, "it has no text in any language"},
        {Verdict::NO_PAGE, "it has no WebPage"},
        {Verdict::NO_DATES, "its StartDate or StopDate is no date"},
        {Verdict::TOO_EARLY, "it is shown only after its StartDate"},
        {Verdict::OVER, "it is shown only before its StopDate"},
        {Verdict::NO_BOARD, "it is for machines with board software below 10.0.0.0"},
        {Verdict::NO_RECORD, "the settings of the notebook software have no record of it"},
        {Verdict::NO_TOOL, "its record in the settings has no AppPath"},
        {Verdict::NO_MANIFEST, "its record in the settings has no ImsManifestXml"},
        {Verdict::NO_CATEGORY, "it has no categories"},
        {Verdict::UNKNOWN_CATEGORIES, "none of its categories is installed"},
    };
    const auto found = texts.find(verdict);
    return found == texts.end() ? QString("for an unknown reason") : QString(found->second);
}
