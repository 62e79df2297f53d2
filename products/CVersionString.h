// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A four-part version number.
#pragma once

#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"

// The numbers that a version text stands for, whether the text was a complete version, and the text itself. A
// value type: it does no I/O, and fails only by IsValid() being false; any thread may use its own objects.
//
// Dotted texts ("1.2.3.4") are read part by part, compact ones (7 to 9 or 12 to 14 characters without a dot)
// from the right. Every invalid version sorts below every valid one; invalid ones sort by their texts,
// case-sensitively.
class CVersionString {
public:
    // 0.0.0.0, invalid, with empty texts.
    CVersionString() = default;
    explicit CVersionString(const CAtlString& text);
    CVersionString(const CVersionString&) = default;
    CVersionString(CVersionString&&) noexcept = default;
    CVersionString& operator=(const CVersionString&) = default;
    CVersionString& operator=(CVersionString&&) noexcept = default;
    virtual ~CVersionString() = default;

    virtual bool IsLess(const CVersionString& other) const;
    virtual bool IsEqual(const CVersionString& other) const;
    virtual bool IsGreater(const CVersionString& other) const;
    // The four numbers with dots when valid, the source text otherwise.
    virtual CAtlString GetString() const;
    // Reads a text into this version; a non-empty part without a number leaves its number unchanged.
    virtual CVersionString& SetString(const CAtlString& text);
    virtual CVersionString& SetString(const CAtlStringA& text);

    bool IsValid() const { return valid_; }
    // The text that it was read from.
    const CAtlString& GetSource() const { return sourceText_; }

private:
    int first_ = 0;
    int second_ = 0;
    int third_ = 0;
    int fourth_ = 0;
    CAtlString sourceText_;
    bool valid_ = false;
};
