#include "base/report.h"

#include <gtest/gtest.h>

#include "platform/file.h"
#include "support/recorder.h"

namespace ferrowand {
namespace {

class Report : public testing::Test {
 protected:
  MessageRecorder recorder;
  Reporter reporter{recorder};
};

TEST_F(Report, AnAssertionTellsConditionUnitLineAndSystemError) {
  file::Find(".");
  reporter.Assert("file!=INVALID_HANDLE_VALUE", "..\\winfile.cpp", 50);
  EXPECT_EQ(recorder.OnlyText(),
            "At line 50 in file ..\\winfile.cpp: \"file!=INVALID_HANDLE_VALUE\". GetLastError:0. "
            "The program has attempted to perform something invalid. Please write to the author at "
            "bugs@ferrowand.example to inform him, and include the first sentance of this message "
            "box. Press Yes to terminate program, or No attempt to continue (in which case you "
            "should save and exit immediately)?");
  EXPECT_EQ(recorder.messages[0].title, "ASSERTION FAILURE");
  EXPECT_EQ(recorder.messages[0].buttons, Buttons::YesNo);
  EXPECT_EQ(recorder.messages[0].icon, Icon::Stop);
  EXPECT_EQ(recorder.beeps, 1);
  EXPECT_EQ(recorder.fatalText, "");
  recorder.messages.clear();
  file::Open("no such file", FileAccess::Read);
  const std::string code = std::to_string(LastError());
  EXPECT_NE(code, "0");
  reporter.Assert("x", "y.cpp", 1);
  EXPECT_NE(recorder.OnlyText().find("GetLastError:" + code + "."), std::string::npos);
}

TEST_F(Report, YesEndsTheProgram) {
  recorder.answers = {Answer::Yes, Answer::Yes};
  reporter.Assert("x", "y.cpp", 1);
  EXPECT_EQ(recorder.fatalText, "Fatal Exit!");
  EXPECT_TRUE(recorder.exits.empty());
  reporter.Geometry("Face %i", 3);
  EXPECT_EQ(recorder.exits, std::vector<int>{-1});
}

TEST_F(Report, DamagedInputIsToldWithOkOnlyAndGeometryIsAsked) {
  reporter.Parsing("Line %u: %s", 7u, "odd");
  reporter.Geometry("Face %i", -3);
  EXPECT_EQ(recorder.Said(),
            (std::vector<std::string>{"Parsing Error: Line 7: odd", "Error! Quit?: Face -3"}));
  EXPECT_EQ(recorder.messages[0].buttons, Buttons::Ok);
  EXPECT_EQ(recorder.messages[1].buttons, Buttons::YesNo);
  EXPECT_TRUE(recorder.exits.empty());
  EXPECT_EQ(recorder.beeps, 0);
}

TEST_F(Report, FormattedTextsAreCutAt1024Bytes) {
  const std::string text(5000, 'x');
  EXPECT_EQ(Format("%s", text.c_str()), std::string(1023, 'x'));
  reporter.Parsing("%s", text.c_str());
  EXPECT_EQ(recorder.OnlyText().size(), 1023u);
  EXPECT_EQ(Format("%s", text.substr(0, 1023).c_str()).size(), 1023u);
}

}  // namespace
}  // namespace ferrowand
