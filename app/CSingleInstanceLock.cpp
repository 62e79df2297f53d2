// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CSingleInstanceLock.h"

#include <array>

#include <sys/ipc.h>
#include <sys/sem.h>

namespace {

// The existing set of one semaphore, or a new one, whose value Linux makes 0 (semget(2)); -1 on failure.
int OpenOrCreate(key_t key) {
    constexpr int ANYBODY_MAY_USE = 0666;
    const int existing = semget(key, 1, 0);
    return existing != -1 ? existing : semget(key, 1, IPC_CREAT | IPC_EXCL | ANYBODY_MAY_USE);
}

// From 0 to 1, in one operation: two copies that start at the same moment cannot both succeed. SEM_UNDO lets
// the kernel take the increment back when the process dies.
bool Take(int set) {
    std::array<sembuf, 2> operations = {{{0, 0, IPC_NOWAIT}, {0, 1, SEM_UNDO}}};
    return semop(set, operations.data(), operations.size()) == 0;
}

}  // namespace

CSingleInstanceLock::CSingleInstanceLock(const char* path, char projectId) {
    const key_t key = ftok(path, projectId);
    if (key == -1)
        return;
    set_ = OpenOrCreate(key);
    held_ = set_ != -1 && Take(set_);
}

CSingleInstanceLock::~CSingleInstanceLock() {
    if (held_)
        semctl(set_, 0, IPC_RMID);
}
