// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A line of text that may be longer than the room for it.
#pragma once

#include <QLabel>

// A label of plain text that never asks for more width than it is given: what has no room is left out at the
// end and marked by an ellipsis, and then the whole text is in the tool tip. text() is always all of it. GUI
// thread only.
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
    // The text as far as there is room for it.
    QString ShownText() const;
};
