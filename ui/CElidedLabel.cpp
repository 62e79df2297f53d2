// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CElidedLabel.h"

#include "ui/PlainText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

CElidedLabel::CElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QSize CElidedLabel::sizeHint() const {
    return {0, QLabel::sizeHint().height()};
}

QSize CElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

QString CElidedLabel::ShownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void CElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          ShownText(), foregroundRole());
}

bool CElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString tip = ShownText() == text() ? QString() : AsHtml(text());
    QToolTip::showText(dynamic_cast<QHelpEvent&>(*event).globalPos(), tip, this);
    return true;
}
