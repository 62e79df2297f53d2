// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What an operation of CAtlString costs, next to std::wstring and QString doing the same work. The names are
// "operation/sample/type".
#include <benchmark/benchmark.h>
#include <vector>

#include "TextKinds.h"

namespace {

// Texts as the program meets them.
struct Sample {
    const char* name;
    QString text;
};

const Sample SAMPLES[] = {
    {"version", QStringLiteral("3.1.555.0")},
    {"name", QStringLiteral("VARDO Board Software")},
    {"address", QStringLiteral("http://updates.vardo.example/products/board/remote/BoardSoftware2.xml")},
    {"scripts",
     QStringLiteral("Обновление программы доски: 白板软件更新, verfügbar für Käufer, 新しいバージョン")},
    {"page", QStringLiteral("A paragraph of plain text, again and again. ").repeated(25)},
};

template <typename Kind, typename Work>
void Register(const char* operation, const Sample& sample, Work work) {
    const std::string name = std::string(operation) + "/" + sample.name + "/" + Kind::NAME;
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(work());
    });
}

// Looking at texts; the two that are compared are equal but do not share their characters.
template <typename Kind>
void RegisterReading(const Sample& sample) {
    using Text = typename Kind::Text;
    const Text text = Kind::FromQString(sample.text);
    const Text same = Kind::FromUtf8(sample.text.toUtf8().constData());
    const Text tail = Kind::FromQString(sample.text.right(5));
    const Text missing = Kind::FromQString(QStringLiteral("nowhere"));
    const wchar_t last = sample.text.back().unicode();
    Register<Kind>("copy", sample, [text] { return Text(text); });
    const std::vector<Text> list(50, text);
    Register<Kind>("copy 50", sample, [list] { return std::vector<Text>(list); });
    Register<Kind>("compare", sample, [text, same] { return Kind::Compare(text, same); });
    Register<Kind>("find tail", sample, [text, tail] { return Kind::Find(text, tail); });
    Register<Kind>("find missing", sample, [text, missing] { return Kind::Find(text, missing); });
    Register<Kind>("find character", sample, [text, last] { return Kind::Find(text, last); });
}

// Making texts out of texts.
template <typename Kind>
void RegisterMaking(const Sample& sample) {
    using Text = typename Kind::Text;
    const Text text = Kind::FromQString(sample.text);
    const auto length = static_cast<int>(sample.text.size());
    Register<Kind>("mid", sample, [text, length] { return Kind::Mid(text, 1, length - 2); });
    Register<Kind>("add", sample, [text] { return Text(text + text); });
    Register<Kind>("append", sample, [text] {
        Text all;
        for (int i = 0; i < 20; ++i)
            all += text;
        return all;
    });
    Register<Kind>("format", sample, [text] { return Kind::Format(text, 5); });
}

template <typename Kind>
void RegisterUtf8(const Sample& sample) {
    const typename Kind::Text text = Kind::FromQString(sample.text);
    const QByteArray bytes = sample.text.toUtf8();
    Register<Kind>("from UTF-8", sample, [bytes] { return Kind::FromUtf8(bytes.constData()); });
    Register<Kind>("to UTF-8", sample, [text] { return Kind::ToUtf8(text); });
}

template <typename Kind>
void RegisterQString(const Sample& sample) {
    const typename Kind::Text text = Kind::FromQString(sample.text);
    Register<Kind>("from QString", sample, [source = sample.text] { return Kind::FromQString(source); });
    Register<Kind>("to QString", sample, [text] { return Kind::ToQString(text); });
}

template <typename Kind>
void RegisterAll(const Sample& sample) {
    RegisterReading<Kind>(sample);
    RegisterMaking<Kind>(sample);
    RegisterUtf8<Kind>(sample);
}

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "C.UTF-8");
    for (const Sample& sample : SAMPLES) {
        RegisterAll<OurKind>(sample);
        RegisterAll<StdKind>(sample);
        RegisterAll<QtKind>(sample);
        RegisterQString<OurKind>(sample);
        RegisterQString<StdKind>(sample);
    }
    benchmark::Initialize(&argc, argv);
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}
