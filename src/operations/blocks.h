// What the game can read is one level of blocks: the world, then entities that hold brushes or
// nothing. Whatever is a block of its own there, a light or a door, never stands within another.
#pragma once

#include <span>

namespace ferrowand {

class EditStep;
class entity;

// Whether the entity, or anything below it, is a block of its own, or will be when it is shown.
bool HoldsBlock(const entity& tree);

// Where the object may stand that was meant for `parent`: there, or outside of the template that it
// shows, or that what it shows shows in turn. Within that one it would show nothing.
entity& OutsideItself(entity& parent, const entity& object);

// Where the object is to stand that was meant for `parent`: there, or beside the block in which
// that stands, and outside itself.
entity& HomeFor(entity& parent, const entity& object);

// Each object, changed or newly filled, comes to stand where it may: beside the block in which it
// stands, and beside it the blocks that it holds. False when one would hold nothing any more: the
// step is to be cancelled then.
bool SettleBlocks(EditStep& step, std::span<entity* const> objects);

}  // namespace ferrowand
