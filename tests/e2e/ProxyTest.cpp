// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program behind a real proxy that asks for credentials.
#include <gmock/gmock.h>

#include "e2e/ProgramTest.h"
#include "e2e/SquidProxy.h"

using testing::ElementsAre;
using testing::HasSubstr;

class ProxyTest : public ProgramTest {
protected:
    static constexpr const char* QUESTION = "Proxy Authentication Required";

    void UseProxy(SquidProxy::Scheme scheme) {
        proxy_ = std::make_unique<SquidProxy>(scheme);
        SampleMachine::SetProxy(proxy_->Port());
        // The products are checked one by one: few are enough to see what happens to the later ones.
        machine_.KnowBoardSoftwareOnly();
    }
    void Answer(const Window& question) {
        desktop_.Type(question, SquidProxy::USER);
        desktop_.Press(question, "Tab");
        desktop_.Type(question, SquidProxy::PASSWORD);
        desktop_.Press(question, "Return");
        EXPECT_TRUE(desktop_.WaitUntilGone(question));
    }
    // The program's own description is what it asks for first.
    Window StartAndWaitForQuestion() {
        program_ = machine_.Start(desktop_.Name());
        return desktop_.WaitFor(program_->Id(), QUESTION);
    }

    std::unique_ptr<SquidProxy> proxy_;
};

TEST_F(ProxyTest, CredentialsOfTheCommandLineAnswerBasicWithoutADialog) {
    UseProxy(SquidProxy::Scheme::BASIC);
    Open({"-username", SquidProxy::USER, "-password", SquidProxy::PASSWORD});
    ASSERT_TRUE(WaitUntilChecked(1)) << program_->Output();
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/board.xml 200"));
    EXPECT_THAT(proxy_->Answers(4), ElementsAre("407 - /program/VardoProductUpdate.xml",
                                                "200 user /program/VardoProductUpdate.xml",
                                                "407 - /updates/board.xml", "200 user /updates/board.xml"));
    EXPECT_TRUE(Close());
}

TEST_F(ProxyTest, TheDialogAnswersDigest) {
    UseProxy(SquidProxy::Scheme::DIGEST);
    Answer(StartAndWaitForQuestion());
    window_ = desktop_.WaitFor(program_->Id(), TITLE);
    ASSERT_TRUE(WaitUntilChecked(1)) << program_->Output();
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/board.xml 200"));
    EXPECT_TRUE(Close());
    EXPECT_EQ(SampleMachine::Setting("LastChecked").toInt(), Today());
}

TEST_F(ProxyTest, TheDialogAnswersBasic) {
    UseProxy(SquidProxy::Scheme::BASIC);
    Answer(StartAndWaitForQuestion());
    window_ = desktop_.WaitFor(program_->Id(), TITLE);
    ASSERT_TRUE(WaitUntilChecked(1)) << program_->Output();
    EXPECT_THAT(machine_.Requests(), HasSubstr("GET /updates/board.xml 200"));
    EXPECT_TRUE(Close());
}

TEST_F(ProxyTest, CancelEndsTheAskingAndTheFetching) {
    UseProxy(SquidProxy::Scheme::BASIC);
    desktop_.Press(StartAndWaitForQuestion(), "Escape");
    window_ = desktop_.WaitFor(program_->Id(), TITLE);
    ASSERT_TRUE(WaitUntilChecked(1)) << program_->Output();
    EXPECT_TRUE(Close());
    EXPECT_EQ(machine_.Requests(), "");
    EXPECT_THAT(proxy_->Answers(2),
                ElementsAre("407 - /program/VardoProductUpdate.xml", "407 - /updates/board.xml"));
}
