#include "operations/csg_commands.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/report.h"
#include "document/classes/entity_class.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/brush_check.h"
#include "operations/csg.h"
#include "operations/face_texture.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

// Pieces of pieces stand below each other; from here on they stand beside each other, so that a map
// in which much was cut can be read again.
constexpr int MAXNESTING = MAXDEPTH / 2;

int DepthOf(const entity& e) {
  int depth = 0;
  for (const entity* parent = e.Parent(); parent; parent = parent->Parent()) ++depth;
  return depth;
}

BoxTree BoxesOf(const std::vector<const Brush*>& brushes) {
  std::vector<Bounds> boxes;
  boxes.reserve(brushes.size());
  for (const Brush* brush : brushes) boxes.push_back(brush->Box());
  return BoxTree(std::move(boxes));
}

void AddCutters(const entity& cutter, std::vector<const Brush*>& brushes) {
  if (cutter.brush.getNumFaces() > 0) brushes.push_back(&cutter.brush);
  if (!cutter.IsMarked()) return;
  for (const EntityPtr& child : cutter.getEntityList()) AddCutters(*child, brushes);
}

std::vector<const Brush*> CuttersOf(std::span<entity* const> objects) {
  std::vector<const Brush*> brushes;
  for (const entity* object : objects) AddCutters(*object, brushes);
  return brushes;
}

CutLoss LossOf(const Carving& carving, Reporter& reporter) {
  const auto isKeepable = [&](const EntityPtr& piece) {
    return IsKeepable(piece->brush, reporter);
  };
  if (carving.loss != CutLoss::None) return carving.loss;
  return std::ranges::all_of(carving.outside, isKeepable) ? CutLoss::None : CutLoss::TooSmall;
}

// What happened to one brush and all that has become of it.
class Losses {
 public:
  void Note(CutLoss loss) {
    tooManyFaces_ |= loss == CutLoss::TooManyFaces;
    tooSmall_ |= loss == CutLoss::TooSmall;
  }
  void AddTo(CsgCount& count) const {
    count.tooManyFaces += tooManyFaces_;
    count.tooSmall += tooSmall_;
  }

 private:
  bool tooManyFaces_ = false;
  bool tooSmall_ = false;
};

void ReportUncut(const CsgCount& count, Reporter& reporter) {
  std::string text;
  const auto add = [&](std::size_t brushes, const char* reason) {
    if (brushes == 0) return;
    if (!text.empty()) text += "\n";
    text += Format("%u %s not be cut as wanted: a piece would %s.", static_cast<unsigned>(brushes),
                   brushes == 1 ? "brush could" : "brushes could", reason);
  };
  add(count.tooManyFaces, "have too many faces");
  add(count.tooSmall, "be too small for whole units");
  if (!text.empty()) reporter.Show("Ferrowand says", text);
}

// One walk over the map: each brush is cut by the cutters that it meets, in their order, and so is
// each piece by those behind the one that made it.
class Subtraction {
 public:
  // `look` is that of new faces, null for that of what is cut.
  Subtraction(std::vector<const Brush*> cutters, const Face* look, EditStep& step)
      : cutters_(std::move(cutters)),
        caps_(CapTexture::First, look),
        boxes_(BoxesOf(cutters_)),
        step_(step),
        reporter_(step.map().Data().reporter) {}

  void Spare(std::span<entity* const> objects) { spared_.insert(objects.begin(), objects.end()); }
  void CutTree(entity& target);

  const CsgCount& Count() const { return count_; }
  // Those that are in pieces now and do not lie within another, in the order of the map.
  const std::vector<entity*>& Outermost() const { return outermost_; }

 private:
  struct Work {
    entity* object;
    std::vector<std::size_t> cutters;
    int depth;
  };

  bool CutBrush(entity& target);
  bool Cut(const Work& work, std::vector<Work>& more, Losses& losses);
  void Give(entity& target, int depth, std::vector<EntityPtr> pieces, const Work& rest,
            std::vector<Work>& more);

  std::vector<const Brush*> cutters_;
  CapLook caps_;
  BoxTree boxes_;
  EditStep& step_;
  Reporter& reporter_;
  std::unordered_set<const entity*> spared_;
  CsgCount count_;
  std::vector<entity*> outermost_;
};

void Subtraction::CutTree(entity& target) {
  if (spared_.contains(&target) || !IsOpen(target)) return;
  const std::size_t before = outermost_.size();
  const std::size_t children = target.getEntityList().size();
  for (std::size_t i = 0; i < children; ++i) CutTree(*target.getEntityList()[i]);
  if (!CutBrush(target)) return;
  outermost_.resize(before);
  outermost_.push_back(&target);
}

bool Subtraction::CutBrush(entity& target) {
  if (target.brush.getNumFaces() == 0) return false;
  std::vector<std::size_t> met = boxes_.Overlapping(target.brush.Box());
  if (met.empty()) return false;
  std::vector<Work> open;
  Losses losses;
  const bool isCut = Cut({&target, std::move(met), DepthOf(target)}, open, losses);
  while (!open.empty()) {
    const Work next = std::move(open.back());
    open.pop_back();
    Cut(next, open, losses);
  }
  count_.cut += isCut;
  losses.AddTo(count_);
  return isCut;
}

bool Subtraction::Cut(const Work& work, std::vector<Work>& more, Losses& losses) {
  entity& target = *work.object;
  for (auto cutter = work.cutters.begin(); cutter != work.cutters.end(); ++cutter) {
    const Brush& by = *cutters_[*cutter];
    if (!BoxesOverlap(target.brush.Box(), by.Box())) continue;
    Carving carving = Carve(target.brush, by, *step_.map().classSet, caps_, reporter_);
    if (const CutLoss loss = LossOf(carving, reporter_); loss != CutLoss::None) {
      losses.Note(loss);
      continue;
    }
    step_.ChangeKeys(target);
    target.brush.Clear();
    Give(target, work.depth, std::move(carving.outside),
         {nullptr, {cutter + 1, work.cutters.end()}, 0}, more);
    return true;
  }
  return false;
}

void Subtraction::Give(entity& target, int depth, std::vector<EntityPtr> pieces, const Work& rest,
                       std::vector<Work>& more) {
  const bool isDeep = depth >= MAXNESTING && target.Parent();
  entity& holder = isDeep ? *target.Parent() : target;
  for (EntityPtr& piece : pieces) {
    entity& given = step_.Add(std::move(piece), holder);
    if (!rest.cutters.empty()) more.push_back({&given, rest.cutters, isDeep ? depth : depth + 1});
  }
}

// To the end of what holds them, in the order given; those of one parent in a row at once.
void MoveToEnd(EditStep& step, const std::vector<entity*>& objects) {
  std::vector<std::vector<entity*>> families;
  std::unordered_map<const entity*, std::size_t> familyOf;
  for (entity* object : objects) {
    if (!object->Parent()) continue;
    const auto [found, isNew] = familyOf.try_emplace(object->Parent(), families.size());
    if (isNew) families.emplace_back();
    families[found->second].push_back(object);
  }
  for (const auto& family : families) step.Move(family, *family.front()->Parent());
}

// In the order given, at the end of what holds them; what stood in the map itself goes where the
// map puts new objects. Those that stand in that order already go at once.
void GiveBack(EditStep& step, std::span<entity* const> objects) {
  Map& map = step.map();
  while (!objects.empty()) {
    entity& parent = *objects.front()->Parent();
    std::size_t run = 1;
    while (run < objects.size() && objects[run]->Parent() == &parent &&
           parent.IndexOf(*objects[run - 1]) < parent.IndexOf(*objects[run])) {
      ++run;
    }
    const auto within = [&](const entity* e) { return map.NewParent().IsWithin(*e); };
    const bool isHomeless = &parent == &map && std::ranges::none_of(objects.first(run), within);
    step.Move(objects.first(run), isHomeless ? map.NewParent() : parent);
    objects = objects.subspan(run);
  }
}

void AddTargets(const entity& e, std::vector<const Brush*>& brushes) {
  if (!IsOpen(e)) return;
  if (e.brush.getNumFaces() > 0) brushes.push_back(&e.brush);
  for (const EntityPtr& child : e.getEntityList()) AddTargets(*child, brushes);
}

// The parts of one brush inside any of the others; what lies in several is taken once.
class Intersection {
 public:
  Intersection(std::vector<const Brush*> cutters, const Face* look, const ClassSet& classes,
               Reporter& reporter)
      : cutters_(std::move(cutters)),
        caps_(CapTexture::First, look),
        boxes_(BoxesOf(cutters_)),
        classes_(classes),
        reporter_(reporter) {}

  CutLoss Add(const Brush& target, entity& holder) const;

 private:
  std::vector<const Brush*> cutters_;
  CapLook caps_;
  BoxTree boxes_;
  const ClassSet& classes_;
  Reporter& reporter_;
};

CutLoss Intersection::Add(const Brush& target, entity& holder) const {
  std::vector<EntityPtr> outside;
  outside.push_back(std::make_unique<entity>(classes_));
  outside.back()->brush = target.Copy();
  for (const std::size_t cutter : boxes_.Overlapping(target.Box())) {
    std::vector<EntityPtr> next;
    for (const EntityPtr& piece : outside) {
      Carving carving = Carve(piece->brush, *cutters_[cutter], classes_, caps_, reporter_);
      if (carving.loss != CutLoss::None) return carving.loss;
      std::ranges::move(carving.outside, std::back_inserter(next));
      if (carving.inside.getNumFaces() == 0) continue;
      if (!IsKeepable(carving.inside, reporter_)) return CutLoss::TooSmall;
      EntityPtr common = std::make_unique<entity>(classes_);
      common->brush = std::move(carving.inside);
      holder.AddChild(std::move(common));
    }
    outside = std::move(next);
  }
  return CutLoss::None;
}

}  // namespace

CsgCount Subtract(entity& target, const Brush& cutter, EditStep& step) {
  Subtraction subtraction({&cutter}, nullptr, step);
  subtraction.CutTree(target);
  return subtraction.Count();
}

CsgCount SubtractEntity(entity& target, const entity& cutter, EditStep& step) {
  std::vector<const Brush*> cutters;
  AddCutters(cutter, cutters);
  Subtraction subtraction(std::move(cutters), nullptr, step);
  subtraction.CutTree(target);
  return subtraction.Count();
}

void SubtractSelection(Map& map, std::string_view texture) {
  const std::vector<entity*> objects = SelectedRoots(map);
  if (objects.empty()) return;
  const Face look = NewLook(map, texture);
  CsgCount count;
  {
    EditStep step(map);
    Subtraction subtraction(CuttersOf(objects), texture.empty() ? nullptr : &look, step);
    subtraction.Spare(objects);
    subtraction.CutTree(map);
    count = subtraction.Count();
    if (count.cut > 0) {
      // Nothing leaves the map: there is no need to look through the selection at every move.
      const PointersKept kept(map);
      step.NameBy(subtraction.Outermost());
      MoveToEnd(step, subtraction.Outermost());
      GiveBack(step, objects);
    }
  }
  ReportUncut(count, map.Data().reporter);
}

entity* IntersectSelection(Map& map, std::string_view texture) {
  const std::vector<entity*> objects = SelectedRoots(map);
  if (map.selection.size() != 2 || objects.size() != 2) return nullptr;
  Reporter& reporter = map.Data().reporter;
  std::vector<const Brush*> targets;
  AddTargets(*objects[0], targets);
  const Face look = NewLook(map, texture);
  const Intersection intersection(CuttersOf({objects.data() + 1, 1}),
                                  texture.empty() ? nullptr : &look, *map.classSet, reporter);
  EntityPtr common = std::make_unique<entity>(*map.classSet);
  CsgCount count;
  for (const Brush* target : targets) {
    Losses losses;
    losses.Note(intersection.Add(*target, *common));
    losses.AddTo(count);
  }
  ReportUncut(count, reporter);
  if (count.tooManyFaces + count.tooSmall > 0) return nullptr;

  if (common->getEntityList().empty()) {
    map.selection.Clear();
    return nullptr;
  }
  if (!MayAddTo(map.NewParent())) return nullptr;
  EditStep step(map);
  step.Remove(objects);
  common->SetKey("XMPentityname", "CSGed father");
  entity& added = step.Add(std::move(common), map);
  map.selection.Set({&added});
  return &added;
}

}  // namespace ferrowand
