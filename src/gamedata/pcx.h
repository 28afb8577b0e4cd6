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

// The picture as a texture for WadFile::AddTexture, named after the file, in the nearest colours of
// the editor's palette; its pixels are also what WadFile::RewriteTexture takes. Null when the file
// cannot be read, is no picture of 256 colours or ends early.
std::unique_ptr<Texture> MakeFromPcx(const std::string& path, const Palette& palette);

}  // namespace ferrowand
