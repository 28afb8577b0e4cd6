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
    case EditResult::NotATextureName:
      return "The name of a texture has 1 to 15 letters, no blanks and no quotes";
    case EditResult::NotAWadName:
      return "A map has no way to write semicolons, quotes or line ends in the name of a WAD";
    case EditResult::WadTaken:
      return "This map has a WAD of that name already";
    case EditResult::OtherWadOpen:
      return "Another WAD of this name is open, from another folder: the two would count as one";
    case EditResult::LastWad:
      return "A map needs a WAD";
    case EditResult::LastLayer:
      return "A map needs a layer";
    case EditResult::NoKeyName:
      return "A key needs a name";
    case EditResult::HoldsQuote:
      return "A map has no way to write a double quote within a key or a value";
    case EditResult::HoldsLineEnd:
      return "A key or a value is one line. In a message \\n begins a new one";
    case EditResult::EndsInBackslash:
      return "A backslash at the end would hide the closing quote from the game's tools";
    case EditResult::TextTooLong:
      return "A key or a value can have 1024 bytes";
    case EditResult::TooManyKeys:
      return "An object can have 249 keys";
    case EditResult::KeyTaken:
      return "There is a key of this name already";
    case EditResult::KeyStays:
      return "The object would be nothing, or nowhere, without this key";
    case EditResult::NotThreeNumbers:
      return "A place is three numbers with spaces between them";
    case EditResult::HoldsBrushes:
      return "This class is for points. Tie the brushes to the world first";
    case EditResult::NotTwo:
      return "Select two or more objects first: the first one will target the others";
    case EditResult::NoNameToLink:
      return "Brushes of the world have no names. Tie them to an entity first";
    case EditResult::NoBrushEntity:
      return "Select a brush entity, or brushes of one, first";
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
