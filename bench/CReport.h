// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The results, as a table for people or as JSON for programs.
#pragma once

#include <QString>
#include <vector>

// A figure's name and unit, what it is compared with, and the most that it may be, as a ratio to that.
// Without a reference, ratio bounds the figure itself.
struct Bound {
    const char* name;
    const char* unit;
    const char* reference;
    double ratio;
};

// One measured figure: the program's, and the reference's.
struct Figure {
    Bound bound;
    double ours = 0;
    double reference = 0;
    // Why it could not be measured; empty for a measured figure.
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

// The middle one of the values; of an even number of them, the upper of the two in the middle.
double Median(std::vector<double> values);
