// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Calls of the system that cannot be stopped, and may take half a minute.
#pragma once

#include <QFuture>
#include <QPromise>
#include <system_error>
#include <thread>

// Calls work on a thread of its own, which does not keep the process from ending. The future gets the result,
// or an empty one when the system allows no further thread. Any thread.
template <typename Work>
auto StartDetached(Work work) -> QFuture<decltype(work())> {
    QPromise<decltype(work())> promise;
    auto future = promise.future();
    promise.start();
    try {
        std::thread([promise = std::move(promise), work = std::move(work)]() mutable {
            promise.addResult(work());
            promise.finish();
        }).detach();
        return future;
    } catch (const std::system_error&) {
        return QtFuture::makeReadyFuture(decltype(work())());
    }
}
