// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CWhyDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// In characters of the explanation's font, and in its lines: most explanations fit.
constexpr int COLUMNS = 76;
constexpr int LINES = 9;

// Addresses, versions and English words, which begin at the left in every language.
QPlainTextEdit* MakeExplanation(const QString& name, const QString& text) {
    auto* field = new QPlainTextEdit(text);
    field->setObjectName("explanation");
    field->setAccessibleName(name);
    field->setReadOnly(true);
    field->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    field->setTabChangesFocus(true);
    for (QScrollBar* bar : field->findChildren<QScrollBar*>())
        bar->setContextMenuPolicy(Qt::NoContextMenu);
    field->setLayoutDirection(Qt::LeftToRight);
    field->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const QFontMetrics metrics(field->font());
    // The reason and the buttons need room on the screen, too.
    const QSize screen = field->screen()->availableSize();
    field->setMinimumSize(std::min(metrics.averageCharWidth() * COLUMNS, screen.width() * 3 / 4),
                          std::min(metrics.lineSpacing() * LINES, screen.height() / 3));
    return field;
}

}  // namespace

CWhyDialog::CWhyDialog(const QString& product, const QString& reason, const QString& explanation,
                       QWidget* parent)
    : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName("whyDialog");
    setWindowTitle(product);
    auto* layout = new QVBoxLayout(this);
    if (!reason.isEmpty()) {
        auto* label = new QLabel(reason);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    layout->addWidget(MakeExplanation(product, explanation));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    // The layout takes the box before its second button, so that the Tab key goes through both.
    layout->addWidget(buttons);
    const QPushButton* copy = buttons->addButton(tr("Copy"), QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy, &QPushButton::clicked, this, [text = (reason + '\n' + explanation).trimmed() + '\n'] {
        QApplication::clipboard()->setText(text);
    });
}
