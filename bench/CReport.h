// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The results, as a table for people or as JSON for programs.
#pragma once

#include <QString>
#include <vector>

// One figure: ours, what it is compared with, and how much of that it may be. Without a reference the bound
// is that of the figure itself; without a bound the figure is only stated.
struct Figure {
    QString name;
    QString unit;
    double ours = 0;
    QString referenceName;
    double reference = 0;
    double bound = 0;

    double Ratio() const { return reference > 0 ? ours / reference : ours; }
    bool IsReached() const { return bound <= 0 || Ratio() <= bound; }
};

class CReport {
public:
    void Add(const Figure& figure) { figures_.push_back(figure); }
    QString AsTable() const;
    QString AsJson() const;

private:
    std::vector<Figure> figures_;
};

// The middle one of an odd number of values, or the upper of the two in the middle.
double Median(std::vector<double> values);
