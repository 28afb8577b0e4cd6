// Pictures of 256 colours in and out of a WAD, as run-length encoded PCX files.
#pragma once

#include <memory>
#include <string>

namespace ferrowand {

class Palette;
class Reporter;
struct Texture;

// Writes the picture at its real size with the editor's palette. False, after saying why, when the
// file cannot be written; an older file of that name is whole until then.
bool ExportPcx(Texture& texture, const std::string& path, const Palette& palette,
               Reporter& reporter);

// Both bring the picture's colours to the nearest of the editor's palette, and fail, changing
// nothing, when the file cannot be read, is no picture of 256 colours or ends early.

// Writes a picture of the texture's own size over it in its WAD; false also when the sizes differ
// or the WAD refuses.
bool AlterFromPcx(Texture& texture, const std::string& path, const Palette& palette);

// A new texture for WadFile::AddTexture, named after the file, or null.
std::unique_ptr<Texture> MakeFromPcx(const std::string& path, const Palette& palette);

}  // namespace ferrowand
