// What a long load tells the user while it runs. Pure words and numbers: the editor shows them in
// its progress window, everything else ignores them.
#pragma once

#include <string>

namespace ferrowand {

class LoadProgress {
 public:
  virtual ~LoadProgress() = default;

  // Shown as "Loading: %s ....".
  virtual void Begin(const std::string& fileName) { (void)fileName; }
  // Work of another kind, shown by its name.
  virtual void BeginWork(const std::string& name) { (void)name; }
  // `format` holds one %u: "Entities: %u", "Textures: %u", "Entity classes: %u". `part` of `whole`
  // moves the bar; a whole of 0 leaves it.
  virtual void Step(const char* format, unsigned count, unsigned part, unsigned whole) {
    (void)format, (void)count, (void)part, (void)whole;
  }
  virtual void End() {}
};

// Brackets one load, or one piece of work.
class ProgressScope {
 public:
  struct Work {
    std::string name;
  };

  ProgressScope(LoadProgress& progress, const std::string& fileName) : progress_(progress) {
    progress_.Begin(fileName);
  }
  ProgressScope(LoadProgress& progress, const Work& work) : progress_(progress) {
    progress_.BeginWork(work.name);
  }
  ~ProgressScope() { progress_.End(); }
  ProgressScope(const ProgressScope&) = delete;
  ProgressScope& operator=(const ProgressScope&) = delete;

 private:
  LoadProgress& progress_;
};

}  // namespace ferrowand
