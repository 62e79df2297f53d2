// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What reading and comparing versions costs, next to QVersionNumber.
#include <benchmark/benchmark.h>
#include <QVersionNumber>

#include "products/CVersionString.h"

namespace {

const char* const TEXT = "10.2.555.17";
const char* const NEXT = "10.2.555.18";

void ParseOurs(benchmark::State& state) {
    const CAtlString text(TEXT);
    for (auto _ : state)
        benchmark::DoNotOptimize(CVersionString(text));
}
BENCHMARK(ParseOurs)->Name("version parse/four numbers/CVersionString");

void ParseTheirs(benchmark::State& state) {
    const QString text(TEXT);
    for (auto _ : state)
        benchmark::DoNotOptimize(QVersionNumber::fromString(text));
}
BENCHMARK(ParseTheirs)->Name("version parse/four numbers/QVersionNumber");

void CompareOurs(benchmark::State& state) {
    const CVersionString a{CAtlString(TEXT)};
    const CVersionString b{CAtlString(NEXT)};
    for (auto _ : state) {
        benchmark::DoNotOptimize(&a);
        benchmark::DoNotOptimize(a.IsLess(b));
    }
}
BENCHMARK(CompareOurs)->Name("version compare/last number/CVersionString");

void CompareTheirs(benchmark::State& state) {
    const QVersionNumber a = QVersionNumber::fromString(QString(TEXT));
    const QVersionNumber b = QVersionNumber::fromString(QString(NEXT));
    for (auto _ : state) {
        benchmark::DoNotOptimize(&a);
        benchmark::DoNotOptimize(QVersionNumber::compare(a, b) < 0);
    }
}
BENCHMARK(CompareTheirs)->Name("version compare/last number/QVersionNumber");

}  // namespace
