// What one editing step did to a map, in the order in which it did it, so that it can be turned
// round as often as wanted: objects that came, went or changed their parent, and what objects that
// stayed looked like before. Objects keep their identity and their places.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "document/announcement.h"
#include "document/entity.h"

namespace ferrowand {

// Of faces, across and down.
using TextureOffsets = std::vector<std::pair<float, float>>;

class UndoStep {
 public:
  explicit UndoStep(Map& map);

  bool IsEmpty() const { return records_.empty() && !otherClasses_ && !otherWads_; }
  // Before the object itself changes; what lies below it is not kept.
  void Keep(entity& e);
  // The same of an object that will only be moved by the vector, with its textures or not: the way
  // back is kept. False, and nothing kept, where that would not lead back to the letter.
  bool KeepWay(entity& e, const Vec3& by);
  // `e` has just been given to its parent.
  void Added(entity& e);
  // To the end of the parent's children, or out of the map, into the step's keeping, when there is
  // none. Those of one parent stay in their order. Costs one walk over each old parent's children.
  void Move(std::span<entity* const> objects, entity* parent);

  // The map uses the classes of that file from now on.
  void ChooseClasses(const std::string& name);
  // It uses the WADs of these names.
  void ChooseWads(const std::vector<std::string>& names);

  // All has been done: if that made another layer the current one, or another group the leading
  // one, taking it back does so too. What is as it was is not kept. Of plain brushes that only went
  // along whole units, with their textures or not, the way is kept instead of copies.
  void Finish();
  // Of what the step keeps, about.
  std::uint64_t Bytes() const;

  // Takes everything back; the next time, does it again. What comes back is bound to the classes
  // and textures that the map uses by now, and what leaves is not selected any more.
  void Reverse();
  // With what that is in the status line: the way, and the name.
  void ReverseAndAnnounce(const char* way);

  std::string name;  // of what it did, for the user; may be empty

  // What has been done, or taken back, since the step began or was reversed last, for whoever shows
  // the map.
  void Describe(MapChange& change);

 private:
  // The object in the map and what it was, or is to be.
  struct Contents {
    entity* object;
    EntityPtr other;
  };
  // Brushes that were moved, and the way back.
  struct Shift {
    std::vector<entity*> objects;
    Vec3 back;
    TextureOffsets offsets;  // of all their faces in a row; none where the textures stayed
  };
  // Children that stand at `parent`, or are kept where that is null, and their other place.
  struct Transfer {
    entity* parent;
    entity* otherParent;
    std::vector<entity*> objects;
    std::vector<std::size_t> otherPlaces;
    std::vector<EntityPtr> kept;
  };

  // Before something changes there.
  void NoteExtent(const entity& e);
  void NoteExtents();
  void DescribeTransfers(MapChange& change) const;
  void Exchange(Contents& contents);
  void Exchange(Shift& shift);
  void Exchange(Transfer& transfer);
  static void DropSameOffsets(Shift& shift);
  void MoveFrom(entity& from, const std::vector<entity*>& objects, entity* to);

  Map* map_;
  Bounds extent_;              // of all that was or is to be seen of it
  bool worldChanges_ = false;  // the keys of the map itself
  std::vector<std::variant<Contents, Shift, Transfer>> records_;
  std::optional<std::string> otherClasses_;  // the file whose classes the map used, or is to use
  std::optional<std::vector<std::string>> otherWads_;  // likewise, by name: some may be closed
  // The current layer and the leading group, on this side of the step and on the other.
  entity* layer_ = nullptr;
  entity* otherLayer_;
  entity* leading_ = nullptr;
  entity* otherLeading_;
};

}  // namespace ferrowand
