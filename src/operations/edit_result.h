// How a command on a map ended. All but Done leave the map as it was.
#pragma once

namespace ferrowand {

enum class EditResult {
  Done,
  Declined,         // by the user, who has been asked
  NothingSelected,  // or nothing that may be changed: hidden and disabled objects may not
  Flattens,         // the matrix leaves no volume, or is no matrix
  BreaksBrush,      // a brush would lose a face, or could not be written in whole units
  OutsideWorld,
  TooMany,
  TooDeep,  // groups within groups
  NotAGroup,
  NoBrushes,    // what would be a brush entity holds none
  SecondWorld,  // a map has one worldspawn
  EditorsOwn,   // a class that holds or hides objects, and is none itself
  NoName,
  NoTemplate,  // that an instance could show
  NameTaken,   // a second one could not be found
  NoTexture,   // in the WADs of the map
  NotATextureName,
  NotAWadName,
  WadTaken,      // by another one of the map
  OtherWadOpen,  // under that name
  LastWad,
  LastLayer,
  NoKeyName,
  HoldsQuote,       // a key or a value, which a file has no way to write
  HoldsLineEnd,     // likewise
  EndsInBackslash,  // likewise
  TextTooLong,      // likewise
  TooManyKeys,
  KeyTaken,  // another key has the name
  KeyStays,  // an object would be nothing, or nowhere, without it
  NotThreeNumbers,
  HoldsBrushes,   // what would be a point
  NotTwo,         // to be linked
  NoNameToLink,   // brushes of the world
  NoBrushEntity,  // whose brushes could go to the world
  NotAMap,        // the text holds no objects
  CannotOpen,     // the file
  CannotWrite     // the file; that has been said
};

// For the user, one sentence; none where there is nothing to say.
const char* Reason(EditResult result);

}  // namespace ferrowand
