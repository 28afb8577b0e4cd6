#include "operations/edit_result.h"

namespace ferrowand {

const char* Reason(EditResult result) {
  switch (result) {
    case EditResult::Done:
    case EditResult::Declined:
      return "";
    case EditResult::NothingSelected:
      return "Select something that can be changed first";
    case EditResult::Flattens:
      return "This would make the selection flat";
    case EditResult::BreaksBrush:
      return "This would break a brush: a face would be lost when the map is saved";
    case EditResult::OutsideWorld:
      return "This would put an object outside the world";
    case EditResult::TooMany:
      return "These would be too many objects";
    case EditResult::TooDeep:
      return "The groups would be nested too deep";
    case EditResult::NotAGroup:
      return "Select one group first";
    case EditResult::NoBrushes:
      return "There would be no brush in it";
    case EditResult::SecondWorld:
      return "A map has one worldspawn";
    case EditResult::EditorsOwn:
      return "Layers, brushes, hidden objects and templates are made by commands of their own";
    case EditResult::NoName:
      return "A template needs a name";
    case EditResult::NoTemplate:
      return "This map has no template of that name";
    case EditResult::NameTaken:
      return "There is a template of this name already";
    case EditResult::NoTexture:
      return "No WAD of this map has a texture of that name";
    case EditResult::LastLayer:
      return "A map needs a layer";
    case EditResult::NotAMap:
      return "There is no map in this text";
    case EditResult::CannotOpen:
      return "Cannot open file!";
    case EditResult::CannotWrite:
      return "Cannot write file!";
  }
  return "";
}

}  // namespace ferrowand
