// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// How the readers of descriptions judge a file.
#pragma once

// Why a file counts, or the first reason why it does not.
enum class Verdict {
    NOT_READ,
    COUNTS,
    // Files of any kind.
    MISSING,      // there is no such file
    NOT_FETCHED,  // nothing came from the network
    NO_XML,       // not readable, malformed, or out of bounds
    // Files of the maker's site, where the maker's key is installed.
    UNSIGNED,          // no good signature
    SIGNATURE_OVER,    // its last day has passed
    SIGNED_ELSEWHERE,  // for another address
    // Descriptions.
    OTHER_NAME,       // its name goes on without a digit after the base name
    KNOWN_VERSION,    // an earlier file has the same version
    NO_PRODUCT,       // no product element
    NO_VERSION,       // no "CurrentVersion"
    NO_FOLDER,        // no address of the folder with the remote file
    NO_FILE_NAME,     // no name of the remote file
    NOT_FOR_CLIENTS,  // the root's "Location" is not "Server"
    // Notifications.
    NO_NOTIFICATION,  // the root is no "Notification"
    NO_TEXT,          // in no language
    NO_PAGE,          // no "WebPage"
    NO_DATES,         // a date is missing, or is no date
    TOO_EARLY,        // today is not after its first day
    OVER,             // today is not before its last day
    NO_BOARD,         // no board software that it is for
    // Gallery content.
    NO_RECORD,          // the notebook software knows no such content
    NO_TOOL,            // its record names no tool
    NO_MANIFEST,        // its record names no manifest
    NO_CATEGORY,        // the list is empty
    UNKNOWN_CATEGORIES  // none of the list's is installed
};

// Stores why a file is rejected, or that it counts; always false, or true.
inline bool Reject(Verdict& place, Verdict reason) {
    place = reason;
    return false;
}

inline bool Accept(Verdict& place) {
    place = Verdict::COUNTS;
    return true;
}
