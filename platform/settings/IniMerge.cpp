// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/settings/IniMerge.h"

#include <algorithm>
#include <vector>

namespace {

struct IniLine {
    // The line and its end.
    QByteArray text;
    // The text between the brackets of the heading above it.
    QByteArray group;
    // The whole key, with "/" between its parts; empty when the line holds no value.
    QByteArray key;
};

// QSettings takes a backslash for "/", unless it is escaped. "%U" begins four digits, which stay.
QByteArray Plain(QByteArray text) {
    return QByteArray::fromPercentEncoding(text.replace('\\', '/').replace("%U", "%25U"));
}

// Returns where the line ends that starts there. As for QSettings, a value in quotes may have
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
            group = content.first(std::max<qsizetype>(content.indexOf(']'), 1)).sliced(1).trimmed();
        else if (const qsizetype equals = content.indexOf('='); !content.startsWith(';') && equals > 0)
            line.key = Plain(group + '/' + content.first(equals).trimmed());
        line.group = group;
        lines.push_back(std::move(line));
        start = end;
    }
    return lines;
}

void Put(std::vector<IniLine>& lines, const IniLine& value) {
    // QSettings does not read repeated lines in the order of the file.
    bool isThere = false;
    for (IniLine& line : lines)
        if (line.key == value.key) {
            line.text =
                line.text.first(line.text.indexOf('=') + 1) + value.text.sliced(value.text.indexOf('=') + 1);
            isThere = true;
        }
    if (isThere)
        return;
    auto before = std::find_if(lines.rbegin(), lines.rend(), [&value](const IniLine& line) {
        return line.group == value.group && !line.text.trimmed().isEmpty();
    });
    if (before == lines.rend()) {
        const QByteArray blank = lines.empty() ? "" : "\n";
        lines.push_back({blank + '[' + value.group + "]\n", value.group, {}});
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
