// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Who is told what products decide when nobody else wants to know.
#pragma once

#include "products/IDecisionObserver.h"

// The one for the whole process. Writes a line on standard output, the key of the one and the other, for each
// installed version that a product's disabler is compared with.
IDecisionObserver& ConsoleObserver();
