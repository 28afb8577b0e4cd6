// All settings of the user, in one record: read at start-up, written at normal shut-down.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <variant>

namespace ferrowand {

class Reporter;
class SettingsStore;

// Defaults are the field initialisers.
struct Options {
  static constexpr std::size_t TEXTLENGTH = 100;  // of a text field, zero byte included
  static constexpr std::size_t RECENTLENGTH = 512;
  static constexpr std::size_t LISTLENGTH = 16384;  // of a text that is a list of names
  static constexpr std::size_t NUMRECENTMAPS = 6;
  static constexpr std::size_t NUMRECENTGROUPS = 8;
  static constexpr std::size_t NUMRECENTCLASSES = 8;
  static constexpr std::size_t NUMKEYACTIONS = 14;
  static constexpr int MAXROTATIONSTEP = 180;
  static constexpr std::uint8_t MOSTSHOWN = 4, MOSTORDER = 3;     // of a texture browser
  static constexpr std::uint16_t LEASTZOOM = 50, MOSTZOOM = 400;  // of textures, per cent

  float gammaRed = 1.0f, gammaGreen = 1.0f, gammaBlue = 1.0f;
  std::int32_t undoLevels = 30;
  std::uint32_t undoMegabytes = 0;  // that the steps of a map may hold; 0 is by the machine
  std::string defaultWad = "quake.wad";
  std::string defaultQc = "ents.qc";
  std::string quakeDirectory = "c:\\quake";
  std::string quakeExecutable = "quake.exe";
  std::string defaultEntity = "light";
  std::string qbspParams, lightParams, visParams, quakeParams;
  std::string groupsDirectory = "groups";
  std::uint8_t mipType = 1;
  std::uint8_t smartSelection = 1;
  std::uint16_t findFlags = 0;
  std::uint16_t qbspFlags = 721;
  std::uint8_t visLevel = 4;
  std::uint8_t compileThreads = 0;
  std::uint8_t useDirect3D = 1;
  std::uint8_t useHardware = 0;
  std::uint8_t showToolbar = 1;
  std::uint8_t defaultWorldType = 0;
  std::uint8_t defaultSounds = 0;
  std::uint8_t dither3D = 0;
  std::uint8_t forceEntityLinks = 0;
  std::uint32_t backClip = 5000;  // world units
  std::uint16_t textureCache;     // textures; by the machine's memory
  std::uint8_t renderPointEntities = 1;
  std::uint8_t showTips = 1;
  std::uint8_t useJoystick = 1;
  std::uint8_t joystickNumber = 0;
  std::uint16_t joystickSpeed = 300;
  std::uint8_t trackMouse = 1;
  std::array<std::string, NUMRECENTMAPS> previousFiles;  // newest first
  std::array<std::string, NUMRECENTGROUPS> previousGroups;
  std::array<std::string, NUMRECENTCLASSES> recentClasses;  // of entities, by name
  std::uint32_t maxTextureSize = 65536;                     // texels
  std::uint8_t cameraMoveMethod = 0;
  std::uint8_t exportOnlyOneWad = 0;
  std::uint16_t rightTraySize = 60;  // pixels
  std::uint8_t blackBack = 0;
  std::uint8_t entityNames = 0;
  std::uint32_t quakeLightingFlags = 3;
  std::uint8_t swapJoyPitch = 0;
  std::uint8_t drawLightRadius = 0;
  std::uint8_t largeness = 0;
  std::uint8_t drawTemplates = 0;
  std::uint8_t smallCaptions = 0;
  std::uint8_t noTextureCaptions = 0;
  std::uint8_t textureLock = 0;       // textures go with their faces
  std::uint8_t rotationStep = 15;     // of turns with the mouse, degrees, 1 .. MAXROTATIONSTEP
  std::uint8_t backups = 3;           // earlier versions that a save keeps beside the file
  std::uint16_t autosaveMinutes = 5;  // between two times that unsaved work is kept; 0: never
  std::int32_t frameLeft = 0, frameTop = 0, frameRight = 0, frameBottom = 0;  // empty: unknown
  std::uint8_t frameMaximised = 1;
  std::string entityTreePlace;        // of the window in the frame's client area; empty: unknown
  std::string findPlace;              // of Find Entity on the screen
  std::uint8_t entityTreeShows = 3;   // bits: hidden, disabled, only points, only named, brushes
  std::string facePlace;              // of the window of face edit on the screen
  std::string propertiesPlace;        // of the window of properties on the screen
  std::string currentTexture;         // that is put on faces; empty: the first of the first WAD
  std::string recentTextures;         // names with blanks between them, the newest first
  std::string favouriteTextures;      // likewise, in the order of choosing
  std::string wadFolders;             // where missing WADs were found, '|' between them
  std::string texturesPlace;          // of the texture browser in the frame's client area
  std::uint8_t texturesShown = 0;     // of a texture browser: a WallShows
  std::uint8_t texturesOrder = 0;     // a WallOrder
  std::uint16_t texturesZoom = 100;   // per cent
  std::string replacePlace;           // of Replace Texture on the screen
  std::uint8_t replaceFlags = 0;      // its last state
  std::string wadManagerPlace;        // on the screen
  std::uint8_t primitivesFollow = 1;  // new solids have the current texture
  std::uint8_t hollowFollows = 1;     // and so have the new faces of hollow solids
  std::uint8_t csgFollows = 0;        // and those of what is cut
  std::uint8_t paleOthers = 0;        // while something is selected, all else is drawn paler
  std::array<std::array<std::uint8_t, 2>, NUMKEYACTIONS> keys;  // virtual-key codes

  Options();

  // From the store; what is missing or unreadable keeps its default. False when the settings have
  // never been written: the caller runs the first-run set-up.
  bool Load(SettingsStore& store, Reporter& reporter);
  // False, after telling the user, when the store refuses.
  bool Save(SettingsStore& store, Reporter& reporter) const;

  // Puts the path in front of the recent maps and drops an older mention of it.
  void AddRecentMap(const std::string& path);
  void AddRecentGroup(const std::string& path);
  void AddRecentClass(const std::string& name);

  friend bool operator==(const Options&, const Options&) = default;
};

// A setting, by the field that keeps it.
using OptionField =
    std::variant<float Options::*, std::int32_t Options::*, std::uint8_t Options::*,
                 std::uint16_t Options::*, std::uint32_t Options::*, std::string Options::*>;

// How many textures the cache keeps by default on a machine with that much memory, in bytes.
std::uint16_t DefaultTextureCache(std::uint64_t physicalMemory);

// Tells a new user what to do and ties ".xmp" files to the program. `makeShortcut` is called when
// the user wants one in the Start menu.
void RunFirstTimeSetup(SettingsStore& store, Reporter& reporter,
                       const std::string& currentDirectory,
                       const std::function<void()>& makeShortcut);

}  // namespace ferrowand
