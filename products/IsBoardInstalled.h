// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whether this machine is one that the maker's notifications are for.
#pragma once

#include "platform/desktop/IEnvironment.h"

#include <boost/shared_ptr.hpp>

// Whether the maker's board software is installed in a version below 10.0.0.0. Where it is installed in
// several versions, the first one found counts. Searches the shared data folder at every call. GUI thread
// only.
bool IsBoardInstalled(const boost::shared_ptr<IEnvironment>& environment);
