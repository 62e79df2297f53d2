// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Puts the program together: its command line, its actions and the workflow that carries them out.
#pragma once

#include "app/CCmdLineParser.h"
#include "app/CWorkFlow.h"
#include "app/CommandLineParameters.h"

// One per process, made before the application object and destroyed after it. Not to be copied: its parts
// point to one another.
class CApplicationFactory {
public:
    // Uses the real environment.
    CApplicationFactory();
    // Uses another environment.
    CApplicationFactory(const boost::shared_ptr<IAttendedEnvironment>& environment,
                        const boost::shared_ptr<IDownloader>& downloader);
    virtual ~CApplicationFactory() = default;
    CApplicationFactory(const CApplicationFactory&) = delete;
    CApplicationFactory& operator=(const CApplicationFactory&) = delete;

    // Reads the command line and chooses the action; false when the command line is faulty or a value was
    // refused.
    bool Parse(int argc, char** argv);
    // Whether the chosen action needs a GUI.
    bool IsGuiEnabled() const { return gui_; }
    // Whether the chosen action is the interactive check.
    bool IsInteractive() const { return gui_ && !silentParameter_.IsChosen(); }
    // The language that the command line wants, else the current one.
    CAtlString GetLocale() const;
    // Runs the chosen action, the interactive check unless something else was chosen, and gives its result.
    int Run();
    // See CWorkFlow::Activate.
    void Activate() { workFlow_.Activate(); }

private:
    void RegisterParameters();

    bool gui_ = true;
    bool actionSelected_ = false;
    bool errorSelected_ = false;
    CCmdLineContext context_;
    CWorkFlow workFlow_;
    CAtlString locale_;
    CStringParameter localeParameter_{locale_};
    CProxyParameter proxyParameter_{context_};
    CStringParameter userNameParameter_{context_.userName};
    CStringParameter passwordParameter_{context_.password};
    CActionParameter silentParameter_{action_, actionSelected_, gui_};
    CActionParameter defaultParameter_{action_, actionSelected_, gui_};
    CErrorParameter errorParameter_{action_, errorSelected_, gui_, context_.errors};
    CFlagParameter verboseParameter_{context_.verbose};
    CFlagParameter overrideProxyParameter_{context_.overrideProxy};
    CCmdLineParser parser_;
    CActionParameter::Action action_;
};
