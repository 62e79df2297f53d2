// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Explanations (CExplanation) for people. They are in English everywhere: those who help a user, or who look
// after many computers, compare them with docs/administration.md.
#pragma once

#include <QJsonObject>
#include <QString>

// A paragraph about the product of a row: of its "name", its "key" and its "explain".
QString ExplanationText(const QJsonObject& row);
// What all products have in common, of the report's JSON: which list, and whether a silent check is due.
QString CommonExplanation(const QJsonObject& report);
