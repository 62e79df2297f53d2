// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Keeps a second copy of the program from running.
#pragma once

// Holds a System V semaphore whose key comes from a file (ftok(3): its inode and device) and a project
// number: processes that lock the same file exclude each other, also those of different users. The kernel
// releases the semaphore of a process that dies. Not to be copied.
class CSingleInstanceLock {
public:
    // Tries once to take the lock, without waiting. path is a 0-terminated file name as the system takes it.
    CSingleInstanceLock(const char* path, char projectId);
    // Removes the semaphore set when this object holds it.
    ~CSingleInstanceLock();
    CSingleInstanceLock(const CSingleInstanceLock&) = delete;
    CSingleInstanceLock& operator=(const CSingleInstanceLock&) = delete;

    // False when another process holds the lock, and when anything failed.
    bool IsHeld() const { return held_; }

private:
    bool held_ = false;
    int set_ = -1;
};
