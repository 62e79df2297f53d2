// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// An explanation for people.
#pragma once

#include <QJsonObject>
#include <QString>

// What all products have in common, of the "explain" of any: which list, and whether a silent check is due.
QString CommonExplanation(const QJsonObject& explanation);
// A paragraph about the product of a row, made of its "explain".
QString ExplanationText(const QJsonObject& row);
