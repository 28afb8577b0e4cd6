// The entity classes of one file (QuakeC, DEF or FGD) together with the editor's own seven, and the
// library that shares such sets between maps.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "document/classes/entity_class.h"
#include "gamedata/class_log.h"
#include "gamedata/class_source.h"
#include "platform/colour.h"

namespace ferrowand {

class ClassLibrary;
class LoadProgress;
class Reporter;
class SearchPath;

// The class menu as plain data: an item is a class, or a group that holds classes.
struct ClassMenuItem {
  std::string text;
  unsigned id = 0;  // 1000 + index of the class; 0 for a group
  std::vector<ClassMenuItem> items;
};

class ClassSet {
 public:
  // Native classes only.
  explicit ClassSet(ClassLibrary& library);
  ~ClassSet();

  // Takes the classes of the file; false, and all as before, when it cannot be opened. Mistakes in
  // the file are listed with their lines, and the first of each kind reported under "Parsing
  // Error". Loaded anew, a class of the same name stays the object that it is; one that is no more
  // lives on, for whoever holds it, but is not found again.
  bool Load(const std::string& path);
  // The same from where it was loaded, without a word.
  bool LoadAgain();
  // Whether a file that it was made from is another one by now.
  bool IsStale() const;
  // Whether it was loaded from that file.
  bool IsOf(const std::string& path) const;

  const std::string& FileName() const { return fileName_; }
  void SetFileName(std::string name) { fileName_ = std::move(name); }
  // The first class of exactly that name in the order of Classes(); else "unknown".
  EntityClass& FindClass(std::string_view classname) const;
  // Native classes first, names descending; then the file's, ascending without regard to case, and
  // of equal names the last one of the file first.
  const std::vector<std::unique_ptr<EntityClass>>& Classes() const { return classes_; }
  EntityClass* ClassOfMenuId(unsigned id) const;
  // Of the class that FindClass finds by that name; 0 for none.
  unsigned MenuIdOf(std::string_view classname) const;
  const std::vector<ClassMenuItem>& Menu() const { return menu_; }
  ClassLibrary& Library() const { return library_; }
  // What was wrong with the file, and how much in all.
  const std::vector<ClassMessage>& Messages() const { return messages_; }
  std::size_t MessageCount() const { return messageCount_; }

 private:
  bool Read(const std::string& path, Reporter* boxes, LoadProgress& progress);
  void Take(std::vector<ClassRecord> records);
  void Finish();
  void Sort();
  void BuildMenu();

  ClassLibrary& library_;
  std::string fileName_;
  std::vector<std::unique_ptr<EntityClass>> classes_;
  std::vector<std::unique_ptr<EntityClass>> retired_;  // of a file that has changed
  std::vector<ClassSource> sources_;                   // the file itself first
  std::vector<ClassMessage> messages_;
  std::size_t messageCount_ = 0;
  std::unordered_map<std::string_view, EntityClass*> byName_;
  EntityClass* unknown_ = nullptr;
  std::vector<ClassMenuItem> menu_;
};

// Sets live from their first use to the end of the program. The library is also what ties every
// entity, through its class, to the reporter and to the default set.
class ClassLibrary {
 public:
  ClassLibrary(const SearchPath& path, Reporter& reporter, LoadProgress& progress);

  // The set of the named file: one that is loaded already (names compared without regard to case),
  // else read as named (less what the name shares with the current folder), then from each folder
  // of the search path, then around the folder of who names it, if given. When none can be read
  // that is said, unless quiet, and the native set given.
  ClassSet& Get(const std::string& name, bool quiet = false, const std::string& folder = "");

  // The set of the file that the user has chosen, loaded anew where it is there already; null when
  // it cannot be opened.
  ClassSet* Choose(const std::string& path);
  // Those that have been loaded anew, since their files have changed.
  std::vector<ClassSet*> LoadChanged();

  // The set of new maps; Native() when the file cannot be read, which is said.
  void LoadDefault(const std::string& name);
  // The same, and it is the set of every map, whatever file that names.
  void LoadForAll(const std::string& name);
  ClassSet& Default() const { return *default_; }
  const std::string& DefaultName() const { return defaultName_; }
  // Only the seven.
  ClassSet& Native() const { return *native_; }

  Reporter& Report() const { return reporter_; }
  LoadProgress& Progress() const { return progress_; }
  // In the order of loading.
  const std::vector<std::unique_ptr<ClassSet>>& Loaded() const { return sets_; }

  // One of the ten outline colours, a different one each time.
  Colour NextOutlineColour();

 private:
  ClassSet* Find(const std::string& fileName) const;
  ClassSet* FindOrLoad(const std::string& name);
  ClassSet* FindOrLoadAround(const std::string& folder, const std::string& name);

  const SearchPath& path_;
  Reporter& reporter_;
  LoadProgress& progress_;
  std::vector<std::unique_ptr<ClassSet>> sets_;
  std::unique_ptr<ClassSet> native_;
  ClassSet* default_;
  std::string defaultName_;
  bool isForAll_ = false;
  std::uint32_t outlineSeed_ = 1;
};

}  // namespace ferrowand
