// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The results, as a table for people or as JSON for programs.
#pragma once

#include <QString>
#include <vector>

// What a figure is called, what it is compared with, and how much of that it may be. Without a reference the
// bound is that of the figure itself.
struct Bound {
    const char* name;
    const char* unit;
    const char* reference;
    double ratio;
};

// One figure: ours, and what it is compared with.
struct Figure {
    Bound bound;
    double ours = 0;
    double reference = 0;
    // Why it could not be measured; empty for a figure that was.
    QString leftOut{};

    double Ratio() const { return reference > 0 ? ours / reference : ours; }
    bool IsReached() const { return Ratio() <= bound.ratio; }
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
