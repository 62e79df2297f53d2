// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A line of text that may be wider than its label.
#pragma once

#include <QLabel>

// A label of plain text that never asks for more width than it is given: an ellipsis replaces the end of a
// text that is too wide, and the tool tip then has the whole text. text() is always all of it. GUI thread
// only.
class CElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit CElidedLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    // The text, elided to the label's width.
    QString ShownText() const;
};
