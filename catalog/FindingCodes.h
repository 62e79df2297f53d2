// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What can be wrong with published files: a code each, by which the documentation explains it.
#pragma once

// Least severe first.
enum class Severity {
    // Worth knowing.
    NOTE,
    // The program reads it, but hardly as it was meant.
    WARNING,
    // The program ignores or rejects it, or misreads it for certain.
    ERROR,
};

struct FindingCode {
    const char* name;
    Severity severity;
};

namespace Code {

// Files and XML
inline constexpr FindingCode UNKNOWN_FILE{"unknown-file", Severity::NOTE};
inline constexpr FindingCode MALFORMED{"malformed", Severity::ERROR};
inline constexpr FindingCode REJECTED{"rejected", Severity::ERROR};
inline constexpr FindingCode WRONG_ROOT{"wrong-root", Severity::ERROR};
inline constexpr FindingCode MISSING_ELEMENT{"missing-element", Severity::ERROR};
inline constexpr FindingCode MISSING_ATTRIBUTE{"missing-attribute", Severity::ERROR};
inline constexpr FindingCode UNKNOWN_ELEMENT{"unknown-element", Severity::WARNING};
inline constexpr FindingCode UNKNOWN_ATTRIBUTE{"unknown-attribute", Severity::WARNING};
inline constexpr FindingCode STRAY{"stray", Severity::WARNING};
inline constexpr FindingCode REPEATED_ELEMENT{"repeated-element", Severity::WARNING};
inline constexpr FindingCode NOT_UTF8{"not-utf8", Severity::ERROR};
inline constexpr FindingCode LONE_AMPERSAND{"lone-ampersand", Severity::ERROR};
inline constexpr FindingCode DOUBLE_HYPHEN{"double-hyphen", Severity::NOTE};
inline constexpr FindingCode EMPTY_FOLDER{"empty-folder", Severity::ERROR};
inline constexpr FindingCode UNREAD_FOLDER{"unread-folder", Severity::ERROR};
inline constexpr FindingCode BLANK{"blank", Severity::ERROR};
inline constexpr FindingCode BAD_VALUE{"bad-value", Severity::WARNING};
inline constexpr FindingCode DUPLICATE_KEY{"duplicate-key", Severity::WARNING};

// Versions and ranges
inline constexpr FindingCode INVALID_VERSION{"invalid-version", Severity::ERROR};
inline constexpr FindingCode MISREAD_VERSION{"misread-version", Severity::WARNING};
inline constexpr FindingCode VERSION_FORM{"version-form", Severity::NOTE};
inline constexpr FindingCode SWAPPED_RANGE{"swapped-range", Severity::WARNING};
inline constexpr FindingCode OPEN_RANGE{"open-range", Severity::WARNING};
inline constexpr FindingCode EMPTY_RANGE{"empty-range", Severity::WARNING};

// Addresses and the files behind them
inline constexpr FindingCode NOT_HTTP{"not-http", Severity::ERROR};
inline constexpr FindingCode NOT_SENT{"not-sent", Severity::ERROR};
inline constexpr FindingCode PAGE_ADDRESS{"page-address", Severity::ERROR};
inline constexpr FindingCode MISSING_FILE{"missing-file", Severity::ERROR};
inline constexpr FindingCode MISSING_PAGE{"missing-page", Severity::WARNING};
inline constexpr FindingCode NOT_FOLLOWED{"not-followed", Severity::WARNING};
inline constexpr FindingCode ODD_HOST{"odd-host", Severity::WARNING};
inline constexpr FindingCode ELSEWHERE{"elsewhere", Severity::NOTE};
inline constexpr FindingCode PRIVATE_FILE{"private-file", Severity::NOTE};

// What a server gives
inline constexpr FindingCode NOT_SERVED{"not-served", Severity::ERROR};
inline constexpr FindingCode SERVED_OTHERWISE{"served-otherwise", Severity::ERROR};

// Product lists
inline constexpr FindingCode UNKNOWN_PRODUCT{"unknown-product", Severity::ERROR};
inline constexpr FindingCode EMPTY_LIST{"empty-list", Severity::ERROR};
inline constexpr FindingCode NOT_RAISED{"not-raised", Severity::ERROR};
inline constexpr FindingCode NO_REFRESH{"no-refresh", Severity::WARNING};
inline constexpr FindingCode NO_PAGE{"no-page", Severity::NOTE};
inline constexpr FindingCode NO_EFFECT{"no-effect", Severity::WARNING};
inline constexpr FindingCode AMBIGUOUS_NAME{"ambiguous-name", Severity::WARNING};
inline constexpr FindingCode SAME_NAME{"same-name", Severity::NOTE};

// Descriptions
inline constexpr FindingCode WRONG_CASE{"wrong-case", Severity::ERROR};
inline constexpr FindingCode UNLISTED{"unlisted", Severity::NOTE};
inline constexpr FindingCode SAME_VERSION{"same-version", Severity::WARNING};
inline constexpr FindingCode NOT_SERVER{"not-server", Severity::ERROR};
inline constexpr FindingCode RANGE_WITHOUT_OFFER{"range-without-offer", Severity::WARNING};
inline constexpr FindingCode SAME_LOWER_END{"same-lower-end", Severity::ERROR};
inline constexpr FindingCode OVERLAP{"overlap", Severity::WARNING};
inline constexpr FindingCode UNREACHABLE_OFFER{"unreachable-offer", Severity::ERROR};
inline constexpr FindingCode NEVER_AN_UPDATE{"never-an-update", Severity::WARNING};
inline constexpr FindingCode NO_INSTALLER{"no-installer", Severity::ERROR};
inline constexpr FindingCode NOT_STARTABLE{"not-startable", Severity::ERROR};
inline constexpr FindingCode UNSIGNED_INSTALLER{"unsigned-installer", Severity::ERROR};
inline constexpr FindingCode OLDER_KEY{"older-key", Severity::NOTE};

// Signatures
inline constexpr FindingCode BAD_KEY{"bad-key", Severity::ERROR};
inline constexpr FindingCode SECRET_KEY{"secret-key", Severity::ERROR};
inline constexpr FindingCode UNSIGNED_FILE{"unsigned-file", Severity::ERROR};
inline constexpr FindingCode SIGNED_ELSEWHERE{"signed-elsewhere", Severity::ERROR};
inline constexpr FindingCode OTHER_PATH{"other-path", Severity::ERROR};
inline constexpr FindingCode SIGNATURE_OVER{"signature-over", Severity::ERROR};
inline constexpr FindingCode SIGNATURE_ENDS{"signature-ends", Severity::WARNING};

// Notifications
inline constexpr FindingCode BAD_DATE{"bad-date", Severity::ERROR};
inline constexpr FindingCode NEVER_SHOWN{"never-shown", Severity::ERROR};
inline constexpr FindingCode NO_BOARD{"no-board", Severity::NOTE};
inline constexpr FindingCode EXPIRED{"expired", Severity::NOTE};
inline constexpr FindingCode EMPTY_TEXT{"empty-text", Severity::WARNING};
inline constexpr FindingCode NO_ENGLISH{"no-english", Severity::WARNING};
inline constexpr FindingCode MISSING_TRANSLATION{"missing-translation", Severity::WARNING};

// Gallery content
inline constexpr FindingCode NOT_A_DATE{"not-a-date", Severity::WARNING};
inline constexpr FindingCode NO_COMMON_CATEGORY{"no-common-category", Severity::ERROR};

// Languages and strings files
inline constexpr FindingCode BAD_LANGUAGE_ID{"bad-language-id", Severity::ERROR};
inline constexpr FindingCode BAD_LANGUAGE_CODE{"bad-language-code", Severity::ERROR};
inline constexpr FindingCode UNKNOWN_LANGUAGE{"unknown-language", Severity::WARNING};
inline constexpr FindingCode NO_TEXTS{"no-texts", Severity::WARNING};
inline constexpr FindingCode UNREADABLE{"unreadable", Severity::ERROR};
inline constexpr FindingCode NOT_UTF16{"not-utf16", Severity::ERROR};
inline constexpr FindingCode EMPTY_KEY{"empty-key", Severity::WARNING};
inline constexpr FindingCode OUT_OF_STEP{"out-of-step", Severity::WARNING};
inline constexpr FindingCode LOOSE_KEY{"loose-key", Severity::ERROR};
inline constexpr FindingCode UNCLOSED{"unclosed", Severity::ERROR};
inline constexpr FindingCode ODD_ESCAPE{"odd-escape", Severity::WARNING};
inline constexpr FindingCode CUT_TEXT{"cut-text", Severity::ERROR};

}  // namespace Code
