// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the command-line parser knows of a parameter.
#pragma once

#include "platform/text/CAtlString.h"

// One parameter, bound to the storage that it fills. A virtual base of every concrete parameter, so that a
// parameter made of two kinds has one interface. Does no I/O.
class ICmdLineParam {
public:
    virtual ~ICmdLineParam() = default;
    // Takes the parameter's name as written, without its switch prefix, and its value; false refuses it.
    virtual bool SetValue(const CAtlString& name, const CAtlString& value) = 0;
    // The text of a pending error; empty when there is none.
    virtual CAtlString GetError() const = 0;
};
