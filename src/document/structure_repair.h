// Puts objects where they belong that missing or surplus braces have put elsewhere.
#pragma once

#include "document/entity.h"

namespace ferrowand {

class Map;
class ReadLog;

// Keys, faces and children of `from`, which leaves the tree, go over to `into`.
void Join(entity& into, entity& from);

// An object that was read without an opening brace and without a class: keys belong to the object
// in front of it, whose closing brace came too early, and so do faces where they close its brush.
void JoinPrevious(entity& object);

// Faces of the owner itself, which no brace has opened, become a brush below it, or a part of the
// brush that is open there.
void MakeBrushOfFaces(entity& owner);

// The object at the index goes, and what it holds takes its place.
void ReplaceByChildren(entity& parent, std::size_t index);

// What is left to do when all has been read.
void RepairStructure(Map& map, const ReadLog& log);

}  // namespace ferrowand
