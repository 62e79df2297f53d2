// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Changes an environment variable for the length of a scope.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

// Sets (or, with a null value, removes) a variable, and restores its old value when the scope ends.
class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const char* value) : name_(name) {
        if (const char* previous = std::getenv(name))
            previous_ = previous;
        Set(value);
    }
    ~ScopedEnvironment() { Set(previous_ ? previous_->c_str() : nullptr); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void Set(const char* value) {
        if (value)
            setenv(name_.c_str(), value, 1);
        else
            unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> previous_;
};
