// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A command-line parameter whose value is a path.
#pragma once

#include "app/CStringParameter.h"

// Stores the path as it was written: nothing is resolved or checked.
class CPathParameter : public CStringParameter {
public:
    using CStringParameter::CStringParameter;
};
