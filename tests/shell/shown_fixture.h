// The program with a small map, and what it shows as lines.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "shell/app_fixture.h"
#include "shell/window_teller.h"

namespace ferrowand {

inline constexpr char LAMP[] =
    "{\n\"classname\" \"light\"\n\"origin\" \"80 0 80\"\n\"target\" \"t1\"\n}\n"
    "{\n\"classname\" \"info_null\"\n\"origin\" \"0 96 0\"\n\"targetname\" \"t1\"\n}\n";

class ShownTest : public AppTest {
 protected:
  void Open(const std::string& text) {
    ASSERT_TRUE(Start());
    map = parts->documents.Open(dir.Write("shown.map", text));
    app->Pump();
    teller = std::make_unique<WindowTeller>(
        *parts, WindowTeller::Names{{dir.Path(), "FOLDER"},
                                    {FERROWAND_DATA, "DATA"},
                                    {std::filesystem::current_path().string(), "HERE"}});
  }
  entity* FirstLayer() const {
    for (const EntityPtr& child : map->getEntityList()) {
      const char* classname = child->GetKey("classname");
      if (classname && std::string(classname) == "layer") return child.get();
    }
    return map;
  }
  entity* Object(std::size_t index) const { return FirstLayer()->getEntityList().at(index).get(); }
  void Tell(const std::string& name, const std::vector<std::string>& what) {
    lines.push_back(name);
    for (const std::string& each : what) lines.push_back("  " + each);
  }

  Map* map = nullptr;
  std::unique_ptr<WindowTeller> teller;
  std::vector<std::string> lines;
};

}  // namespace ferrowand
