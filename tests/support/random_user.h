// Someone who gives one command after another with everything about them at random.
#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "document/map.h"
#include "operations/transform_selection.h"

namespace ferrowand {

// What is drawn is drawn in one order whatever the compiler does with the arguments of a call, so
// that one seed gives the same map in every build.
class RandomUser {
 public:
  // Groups are saved to the file and inserted from there.
  RandomUser(Map& map, const std::string& groupFile, unsigned seed)
      : map_(map), groupFile_(groupFile), random_(seed) {}

  // Selects some objects of the map, or not, and gives a command; its name.
  const char* DoSomething();
  // What is refused most of the time has hardly been tested.
  void ExpectAllUsed() const;

 private:
  struct Command {
    const char* name;
    void (*run)(RandomUser&);
    bool isStep = true;
  };

  std::size_t Below(std::size_t count) { return random_() % count; }
  float Step() { return static_cast<float>(Below(17)) * 8 - 64; }
  Vec3 Offset() { return {Step(), Step(), Step()}; }
  void Draw();
  void PickSomething();
  void PickTwoThatOverlap();
  void PickGroups();
  entity* PickAnInstance();
  void TouchUp();
  void RemoveAKey();
  void EditTemplate();

  static const std::vector<Command> COMMANDS;

  Map& map_;
  std::string groupFile_;
  std::mt19937 random_;
  std::map<std::string, int> given_, done_;
  std::string clipboard_;

  // Drawn anew for every command.
  Vec3 by_, at_;
  DVec3 middle_;
  bool coin_ = false;
  int few_ = 0;  // below 4
  std::string number_, name_, key_;
  TransformOptions how_;
  entity* layer_ = nullptr;
};

}  // namespace ferrowand
