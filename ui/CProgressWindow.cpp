// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CProgressWindow.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/PlainText.h"

namespace {

// So wide that most texts take one line, and that the window keeps its size while the numbers grow.
constexpr int TEXT_WIDTH_IN_CHARACTERS = 60;
// The delay while a modal dialog is open, in milliseconds.
constexpr int LOOK_AGAIN_AFTER = 100;

QString SizeText(int bytes) {
    return Isolated(QLocale::system().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat));
}

}  // namespace

CProgressWindow::CProgressWindow(const boost::function<void()>& cancel) : cancel_(cancel) {
    connect(&appear_, &QTimer::timeout, this, &CProgressWindow::Appear);
    appear_.setSingleShot(true);
    appear_.setTimerType(Qt::PreciseTimer);
}

void CProgressWindow::Build() {
    text_ = new QLabel;
    bar_ = new QProgressBar;
    bytes_ = new QLabel;
    setWindowTitle(tr("VARDO Product Update: Please Wait"));
    text_->setWordWrap(true);
    text_->setMinimumWidth(std::min(fontMetrics().averageCharWidth() * TEXT_WIDTH_IN_CHARACTERS,
                                    screen()->availableSize().width() * 3 / 4));
    bar_->setObjectName("progressBar");
    bar_->setTextVisible(false);
    bytes_->setObjectName("bytesLabel");
    // Aligns with the window's side, independent of the text's direction.
    bytes_->setAlignment(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton* cancelButton = buttons->button(QDialogButtonBox::Cancel);
    cancelButton->setIcon(QIcon());
    // Enter may have been meant for whatever had the focus before.
    cancelButton->setAutoDefault(false);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    for (QWidget* part : {static_cast<QWidget*>(text_), static_cast<QWidget*>(bar_),
                          static_cast<QWidget*>(bytes_), static_cast<QWidget*>(buttons)})
        layout->addWidget(part);
    cancelButton->setFocus();
    connect(buttons, &QDialogButtonBox::rejected, this, &CProgressWindow::reject);
}

void CProgressWindow::Begin(Task task) {
    task_ = task;
    if (isVisible())
        ShowTask();
    else if (task == Task::FETCHING_INSTALLER)
        Appear();
    else if (!appear_.isActive())
        appear_.start(patience_);
}

void CProgressWindow::ShowTask() {
    text_->setText(TextOf(task_));
    bar_->setAccessibleName(text_->text());
    bar_->setRange(0, 0);
    bytes_->clear();
    bytes_->setVisible(task_ == Task::FETCHING_INSTALLER);
}

void CProgressWindow::SetBytes(int done, int total) {
    if (!isVisible())
        return;
    bar_->setRange(0, std::max(total, 0));
    bar_->setValue(done);
    bytes_->setText(total > 0 ? tr("%1 of %2").arg(SizeText(done), SizeText(total)) : SizeText(done));
}

void CProgressWindow::Pause() {
    if (appear_.isActive())
        patience_ = appear_.remainingTimeAsDuration();
    appear_.stop();
    hide();
}

void CProgressWindow::reject() {
    appear_.stop();
    // A second click on Cancel must not hit the window of the next step.
    patience_ = PATIENCE;
    QDialog::reject();
    cancel_();
}

void CProgressWindow::Appear() {
    patience_ = std::chrono::milliseconds(0);
    appear_.stop();
    if (QApplication::activeModalWidget()) {
        appear_.start(LOOK_AGAIN_AFTER);
        return;
    }
    if (!bar_)
        Build();
    ShowTask();
    show();
}

QString CProgressWindow::TextOf(Task task) {
    switch (task) {
        case Task::LOOKING_FOR_PROGRAM:
            return tr("Looking for a new version of VARDO Product Update...");
        case Task::LOOKING_FOR_LIST:
            return tr("Looking for a new list of products...");
        case Task::FETCHING_INSTALLER:
            return tr("Downloading the new version of VARDO Product Update...");
    }
    return {};
}
