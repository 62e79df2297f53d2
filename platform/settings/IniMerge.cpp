// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/settings/IniMerge.h"

#include <algorithm>
#include <vector>

namespace {

struct IniLine {
    // With its line end.
    QByteArray text;
    // The heading above it, with its brackets.
    QByteArray group;
    // Without escaped characters; empty when the line holds no value.
    QByteArray key;
};

// The line that starts there reaches to the returned place. As for QSettings, a value in quotes may have
// several lines, a backslash takes the next character's meaning away, and a semicolon outside of quotes
// starts a comment.
qsizetype EndOfLine(const QByteArray& text, qsizetype start) {
    bool isQuoted = false;
    bool isComment = false;
    for (qsizetype at = start; at < text.size(); ++at) {
        if (text[at] == '\n' && !isQuoted)
            return at + 1;
        if (isComment)
            continue;
        if (text[at] == '\\')
            ++at;
        else if (text[at] == '"')
            isQuoted = !isQuoted;
        else
            isComment = text[at] == ';' && !isQuoted;
    }
    return text.size();
}

std::vector<IniLine> Lines(const QByteArray& text) {
    std::vector<IniLine> lines;
    QByteArray group;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype end = EndOfLine(text, start);
        IniLine line{text.mid(start, end - start), {}, {}};
        const QByteArray content = line.text.trimmed();
        if (content.startsWith('['))
            group = content;
        else if (const qsizetype equals = content.indexOf('='); !content.startsWith(';') && equals > 0)
            line.key = QByteArray::fromPercentEncoding(content.first(equals).trimmed());
        line.group = group;
        lines.push_back(std::move(line));
        start = end;
    }
    return lines;
}

void Put(std::vector<IniLine>& lines, const IniLine& value) {
    const auto same = std::find_if(lines.rbegin(), lines.rend(), [&value](const IniLine& line) {
        return line.group == value.group && line.key == value.key;
    });
    if (same != lines.rend()) {
        same->text = value.text;
        return;
    }
    auto before = std::find_if(lines.rbegin(), lines.rend(), [&value](const IniLine& line) {
        return line.group == value.group && !line.text.trimmed().isEmpty();
    });
    if (before == lines.rend()) {
        const QByteArray blank = lines.empty() ? "" : "\n";
        lines.push_back({blank + value.group + '\n', value.group, {}});
        before = lines.rbegin();
    }
    lines.insert(before.base(), value);
}

}  // namespace

QByteArray MergeIni(const QByteArray& file, const QByteArray& values) {
    std::vector<IniLine> lines = Lines(file.isEmpty() || file.endsWith('\n') ? file : file + '\n');
    for (const IniLine& value : Lines(values)) {
        if (!value.key.isEmpty())
            Put(lines, value);
    }
    QByteArray merged;
    for (const IniLine& line : lines)
        merged += line.text;
    return merged;
}
