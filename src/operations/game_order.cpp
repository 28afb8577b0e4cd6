#include "operations/game_order.h"

#include "document/classes/special_classes.h"
#include "document/map.h"

namespace ferrowand {
namespace {

// Walks as the classes write (see entity_output.cpp).
class Walk {
 public:
  Walk(Map& map, unsigned option) : map_(map), option_(option) {}

  std::vector<GameBlock> Run() {
    blocks_.push_back({&map_, {}});
    if (map_.brush.HasText()) blocks_.front().brushes.push_back(&map_);
    for (const EntityPtr& child : map_.getEntityList()) AddBrushes(*child, nullptr, 0);
    for (const EntityPtr& child : map_.getEntityList()) AddBlocks(*child, nullptr);
    return std::move(blocks_);
  }

 private:
  // `told`: what stands for the object in the answer; null for itself. What an instance shows is no
  // object of the map.
  void AddBrushes(entity& e, entity* told, std::size_t block) {
    const EntityKind kind = e.getClass()->Kind();
    if (kind == EntityKind::TemplateClass) return;
    if (kind != EntityKind::TemplateInstance) return BrushPart(e, told ? told : &e, told, block);
    entity* const instance = told ? told : &e;
    if (const entity* shape = ExpandInstance(e)) BrushPart(*shape, instance, instance, block);
  }
  void BrushPart(const entity& e, entity* own, entity* told, std::size_t block) {
    if ((option_ & WRITE_VISIBLE_ONLY) && !e.IsVisible()) return;
    if (e.IsOwnBlock() && e.IsMarked()) return;
    if (!e.IsOwnBlock() && e.brush.HasText()) blocks_[block].brushes.push_back(own);
    for (const EntityPtr& child : e.getEntityList()) AddBrushes(*child, told, block);
  }

  void AddBlocks(entity& e, entity* told) {
    const EntityKind kind = e.getClass()->Kind();
    if (kind == EntityKind::TemplateClass) return;
    if (kind != EntityKind::TemplateInstance) return BlockPart(e, told ? told : &e, told);
    entity* const instance = told ? told : &e;
    if (const entity* shape = ExpandInstance(e)) BlockPart(*shape, instance, instance);
  }
  void BlockPart(const entity& e, entity* own, entity* told) {
    if ((option_ & WRITE_VISIBLE_ONLY) && !e.IsVisible()) return;
    if (e.IsOwnBlock()) {
      const std::size_t block = blocks_.size();
      blocks_.push_back({own, {}});
      if (e.brush.HasText()) blocks_[block].brushes.push_back(own);
      if (e.IsMarked()) {
        for (const EntityPtr& child : e.getEntityList()) AddBrushes(*child, told, block);
      }
    }
    for (const EntityPtr& child : e.getEntityList()) AddBlocks(*child, told);
  }

  Map& map_;
  const unsigned option_;
  std::vector<GameBlock> blocks_;
};

}  // namespace

std::vector<GameBlock> GameOrder(Map& map, unsigned option) {
  return Walk(map, option).Run();
}

}  // namespace ferrowand
