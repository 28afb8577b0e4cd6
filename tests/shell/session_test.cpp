// A level built from nothing, by the steps that scripts/session.sh does with real mouse and keys.
#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "cli/cli.h"
#include "document/classes/class_set.h"
#include "shell/app_fixture.h"

namespace ferrowand {
namespace {

const std::string SESSION = FERROWAND_TEST_DATA "/../session/";

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The words of a part of a line; parts are divided by '|'.
using Words = std::vector<std::string>;
std::vector<Words> PartsOf(const std::string& line) {
  std::vector<Words> parts;
  std::istringstream text(line.substr(0, line.find('#')));
  for (std::string part; std::getline(text, part, '|');) {
    std::istringstream words(part);
    Words& found = parts.emplace_back();
    for (std::string word; words >> word;) found.push_back(word);
  }
  return parts;
}

class SessionTest : public AppTest {
 protected:
  void Do(const std::vector<Words>& parts) {
    const Words& words = parts[0];
    const std::map<std::string, std::function<void()>> steps{
        {"view", [&] { Activate(ViewNamed(words[1])); }},
        {"give", [&] { GiveById(words[1]); }},
        {"form", [&] { FillForm(words[1], parts); }},
        {"file", [&] { ChooseFile(words[1], parts[1][0]); }},
        {"key", [&] { Key(words[1]); }},
        {"point", [&] { Send(WM_MOUSEMOVE, 0, words, 1); }},
        {"drag", [&] { Drag(words); }},
        {"insert", [&] { Insert(words[1]); }},
        {"map", [&] { SwitchTo(words[1]); }},
        {"undo", [&] { Undo(std::stoi(words[1])); }},
        {"keep", [&] { kept_[words[1]] = SavedText(); }},
        {"same", [&] { EXPECT_EQ(SavedText(), kept_.at(words[1])); }},
        {"same_map", [&] { EXPECT_EQ(ReadAll(dir.Path(words[1])), ReadAll(SESSION + words[1])); }},
        {"info", [&] { CheckInfo(words); }},
        {"picture", [] {}},
    };
    const auto step = steps.find(words[0]);
    ASSERT_NE(step, steps.end());
    step->second();
  }

 private:
  void GiveById(const std::string& id) { Give(static_cast<unsigned>(std::stoul(id))); }

  MapWindow& ViewNamed(const std::string& name) {
    for (const auto& window : parts->windows.All()) {
      if (!window->View() || window->GetMap() != parts->windows.ActiveMap()) continue;
      if (!Has(TextOf(window->Handle()), "(" + name + ")")) continue;
      return *(view_ = static_cast<MapWindow*>(window.get()));
    }
    ADD_FAILURE() << "no view " << name;
    return *view_;
  }

  // Fields that are left alone keep what the form shows.
  void FillForm(const std::string& id, const std::vector<Words>& parts) {
    dialogs.fill = [&parts](const Form& form) {
      FormValues values;
      for (const FormRow& row : form.rows) {
        if (!row.choices.empty()) values.push_back(row.choices[0]);
        values.insert(values.end(), row.values.begin(), row.values.end());
      }
      for (std::size_t i = 0; i < values.size() && i + 1 < parts.size(); ++i) {
        if (parts[i + 1][0] != "-") values[i] = parts[i + 1][0];
      }
      return values;
    };
    GiveById(id);
    dialogs.fill = nullptr;
  }

  void ChooseFile(const std::string& id, const std::string& name) {
    file_ = dir.Path(name);
    dialogs.files = {file_};
    GiveById(id);
  }

  void Key(const std::string& key) {
    if (key == "space") {
      PostMessageA(GetFocus(), WM_KEYDOWN, VK_SPACE, 0);
      app->Pump();
    } else if (key == "plus") {
      SendMessageA(GetFocus(), WM_CHAR, '+', 0);
    } else {
      ASSERT_EQ(key, "shift+bracketleft");
      const HeldKey shift(VK_SHIFT);
      SendMessageA(GetFocus(), WM_CHAR, '{', 0);
    }
  }

  void Send(UINT message, WPARAM buttons, const Words& words, std::size_t first) {
    const ViewTransform& transform = view_->View()->transform;
    Vec3 at;
    at[transform.orienu] = std::stof(words[first]);
    at[transform.orienv] = std::stof(words[first + 1]);
    const Pixel pixel = transform.ToScreen(at);
    SendMessageA(view_->Drawing(), message, buttons, MAKELPARAM(pixel.x, pixel.y));
  }
  void Drag(const Words& words) {
    Send(WM_MOUSEMOVE, 0, words, 1);
    Send(WM_LBUTTONDOWN, MK_LBUTTON, words, 1);
    Send(WM_MOUSEMOVE, MK_LBUTTON, words, 3);
    Send(WM_LBUTTONUP, 0, words, 3);
  }

  void Insert(const std::string& classname) {
    const ClassSet& classes = *parts->windows.ActiveMap()->classSet;
    unsigned id = 1000;
    while (classes.ClassOfMenuId(id) && classes.ClassOfMenuId(id)->classname != classname) ++id;
    dialogs.commands = {id};
    Give(Command::Insert);
  }

  void SwitchTo(const std::string& name) {
    for (const auto& window : parts->windows.All()) {
      if (!window->View() || !window->GetMap()->filename.ends_with(name)) continue;
      file_ = dir.Path(name);
      Activate(*window);
      return;
    }
    ADD_FAILURE() << "no map " << name;
  }

  void Undo(int steps) {
    for (int i = 0; i < steps; ++i) {
      ASSERT_TRUE(parts->commands.IsAvailable(Id(Command::Undo))) << i;
      Give(Command::Undo);
    }
  }

  std::string SavedText() {
    Give(Command::FileSave);
    return ReadAll(file_);
  }

  void CheckInfo(const Words& words) {
    const std::string data = FERROWAND_DATA;
    const std::vector<std::string> arguments{"info", dir.Path(words[1]), "--wad-path", data,
                                             "--qc", data + "/ents.qc"};
    std::ostringstream out, err;
    EXPECT_EQ(RunCli(arguments, out, err), 0) << err.str();
    for (std::size_t i = 2; i + 1 < words.size(); i += 2) {
      std::string name = words[i];
      const bool isClass = Has(out.str(), "  " + name + "\n");
      if (!isClass) std::ranges::replace(name, '_', ' ');
      const std::string told = isClass ? words[i + 1] + "  " + name : name + ": " + words[i + 1];
      EXPECT_TRUE(Has(out.str(), told + "\n")) << told << '\n' << out.str();
    }
  }

  MapWindow* view_ = nullptr;
  std::string file_;
  std::map<std::string, std::string> kept_;
};

TEST_F(SessionTest, ARoomIsBuiltCopiedUndoneAndSavedAsItWasBuilt) {
  ASSERT_TRUE(Start());
  std::ifstream steps(SESSION + "room.txt");
  std::size_t number = 0, done = 0;
  for (std::string line; std::getline(steps, line);) {
    SCOPED_TRACE(std::to_string(++number) + ": " + line);
    const std::vector<Words> parts = PartsOf(line);
    if (parts.empty() || parts[0].empty()) continue;
    Do(parts);
    if (HasFatalFailure()) return;
    ++done;
  }
  EXPECT_GT(done, 60u);
  EXPECT_TRUE(sink.messages.empty()) << sink.messages.front().text;
}

}  // namespace
}  // namespace ferrowand
