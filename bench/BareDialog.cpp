// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The least that any program with such a window must do: a dialog with an empty table of the same columns.
// With "--quit" it ends once its events are handled.
#include <QApplication>
#include <QDialog>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* table = new QTableWidget(0, 4, &dialog);
    table->setHorizontalHeaderLabels({"Product", "Installed version", "Latest version", ""});
    layout->addWidget(table);
    dialog.resize(640, 400);
    if (QApplication::arguments().contains("--quit"))
        QTimer::singleShot(0, &dialog, &QDialog::accept);
    return dialog.exec() == QDialog::Accepted ? 0 : 1;
}
