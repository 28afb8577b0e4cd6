// What the check offers to put right, where that is safe; one step of undo each.
#pragma once

#include <string>

#include "operations/edit_result.h"
#include "operations/map_findings.h"

namespace ferrowand {

class Map;

enum class Repair : std::uint8_t { None, DropFace, SnapCorners, ReplaceTexture, RemoveBrush };

Repair RepairOf(const Problem& problem);
Repair RepairOf(const Finding& finding);
// For the user, what it would do; none for None.
const char* RepairName(Repair repair);

// The face goes, and others that have vanished, if the rest bounds the same sound solid.
EditResult DropFace(Map& map, entity& e, int face);
// The corners of the brush go to whole units, if it stays sound.
EditResult SnapCorners(Map& map, entity& e);
// All faces of the map with that texture get the other one, which must be in a WAD of the map;
// `replaced` tells how many.
EditResult ReplaceTexture(Map& map, const std::string& name, const std::string& by, int& replaced);
// The object goes.
EditResult RemoveBrush(Map& map, entity& e);

}  // namespace ferrowand
