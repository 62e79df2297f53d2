// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CCheckOutcome.h"

#include "ui/MessageBoxes.h"
#include "ui/PlainText.h"

#include <QLocale>
#include <QStringList>

namespace {

// The one item of a product that is checked; GetItemCount() when it has none, as a notice.
unsigned CheckedItem(const IProduct& product) {
    unsigned item = 0;
    while (item < product.GetItemCount() && (!product.IsCurrent(item) || product.IsHighlighted(item)))
        ++item;
    return item;
}

}  // namespace

void CCheckOutcome::Forget() {
    failures_.clear();
    listRefusal_.clear();
}

void CCheckOutcome::OnFailed(const IProduct& product, const QString& reason, const QTime& time) {
    failures_[&product] = {reason, time};
}

QString CCheckOutcome::WhyNotAvailable(const IProduct& product, unsigned item) const {
    if (product.IsChecked(item))
        return {};
    return product.IsCurrent(item) ? WhyFailed(product) : Why(product, item);
}

QString CCheckOutcome::Why(const IProduct& product, unsigned item) const {
    switch (StateOf(product, item, true)) {
        case ItemState::OLDER:
            return tr("Version %1 is installed, too, and only the newest is checked.")
                .arg(product.GetInstalledVersion(CheckedItem(product)).ToQString());
        case ItemState::DISABLED:
            return tr("Its updates are turned off, because %1 is installed.").arg(product.GetDisablerName());
        case ItemState::FAILED:
            return WhyFailed(product);
        case ItemState::SKIPPED:
            return tr("You skip version %1.").arg(product.GetLatestVersion(item).ToQString());
        case ItemState::UPDATE:
            if (!product.HasAction(item))
                return tr("The program that maintains this content is not installed.");
            return product.OpensPage() && product.GetPage(item).IsEmpty() ? NoPageText(product.GetName())
                                                                          : QString();
        default:
            return {};
    }
}

QString CCheckOutcome::WhyFailed(const IProduct& product) const {
    const Failure failure = failures_.value(&product);
    if (failure.reason.isEmpty())
        return {};
    const QString time = QLocale::system().toString(failure.time, QLocale::ShortFormat);
    return tr("Could not be checked at %1. %2").arg(time, failure.reason);
}

QString CCheckOutcome::Summary(const IProduct::List& products) const {
    int found = 0;
    int checkable = 0;
    int updates = 0;
    IProduct::List failed;
    for (const auto& product : products) {
        const unsigned item = CheckedItem(*product);
        if (item == product->GetItemCount())
            continue;
        const ItemState state = StateOf(*product, item, true);
        ++found;
        checkable += state != ItemState::DISABLED;
        updates += state == ItemState::UPDATE;
        if (state == ItemState::FAILED)
            failed.push_back(product);
    }
    QStringList parts;
    if (updates > 0)
        parts << (updates == 1 ? tr("1 update") : tr("%1 updates").arg(updates));
    if (!failed.empty())
        parts << FailureSummary(failed, checkable);
    if (!listRefusal_.isEmpty())
        parts << listRefusal_;
    if (found == 0)
        parts.prepend(tr("No VARDO products were found on this computer"));
    else if (parts.isEmpty())
        parts << tr("Everything is up to date");
    QString line = parts.takeFirst();
    for (const QString& part : std::as_const(parts))
        line = tr("%1. %2").arg(line, part);
    return line;
}

QString CCheckOutcome::FailureSummary(const IProduct::List& failed, int checkable) const {
    const IProduct& last = *failed.back();
    const auto count = static_cast<int>(failed.size());
    QString what = last.GetName();
    if (count > 1)
        what = count == checkable ? tr("Nothing could be checked")
                                  : tr("%1 products could not be checked").arg(count);
    else if (what.isRightToLeft())
        // Its letters would take the numbers of the host along.
        what = Isolated(what);
    return what + ": " + failures_.value(&last).reason;
}
