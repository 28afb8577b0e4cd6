// What the user chooses of a compile, and choices that are kept under a name.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

struct Options;

// Bits of the setting "QBSP flags".
inline constexpr std::uint16_t COMPILE_QBSP = 0x0001;
inline constexpr std::uint16_t COMPILE_NO_FILL = 0x0002;
inline constexpr std::uint16_t COMPILE_ONLY_ENTITIES = 0x0004;
inline constexpr std::uint16_t COMPILE_QBSP_VERBOSE = 0x0008;
inline constexpr std::uint16_t COMPILE_LIGHT = 0x0010;
inline constexpr std::uint16_t COMPILE_EXTRA = 0x0020;
inline constexpr std::uint16_t COMPILE_VIS = 0x0040;
inline constexpr std::uint16_t COMPILE_VIS_FAST = 0x0080;
inline constexpr std::uint16_t COMPILE_VIS_VERBOSE = 0x0100;
inline constexpr std::uint16_t COMPILE_GAME = 0x0200;
inline constexpr std::uint16_t COMPILE_CONSERVE_MEMORY = 0x0400;
inline constexpr std::uint16_t COMPILE_ONLY_VISIBLE = 0x0800;
inline constexpr std::uint16_t COMPILE_AUTO_CLOSE = 0x1000;
inline constexpr std::uint16_t COMPILE_NO_WAIT = 0x2000;
inline constexpr std::uint16_t COMPILE_ALL_FLAGS = 0x3FFF;

inline constexpr std::uint8_t MAXVISLEVEL = 4;

// The initialisers are what "Standard" puts in.
struct CompileOptions {
  std::uint16_t flags =
      COMPILE_QBSP | COMPILE_LIGHT | COMPILE_VIS | COMPILE_VIS_FAST | COMPILE_GAME;
  std::uint8_t visLevel = MAXVISLEVEL;
  std::uint8_t threads = 0;  // 0: the tools are told nothing
  std::string qbspParams{}, lightParams{}, visParams{}, quakeParams{};

  bool Has(std::uint16_t flag) const { return (flags & flag) != 0; }
  friend bool operator==(const CompileOptions&, const CompileOptions&) = default;
};

CompileOptions CompileOptionsOf(const Options& options);
void StoreCompileFlags(const CompileOptions& chosen, Options& options);
void StoreCompileParams(const CompileOptions& chosen, Options& options);

struct CompileProfile {
  std::string name;
  CompileOptions options;
};

// As text that travels: "[name]", then a line for each choice, word first. Reading takes any text:
// lines that say nothing are passed over, numbers brought into their range, parameters cut to what
// the settings hold. Of equal names, case aside, the last one counts.
std::string ProfilesText(std::span<const CompileProfile> profiles);
std::vector<CompileProfile> ReadProfiles(std::string_view text);
// A profile of that name gives way.
void PutProfile(std::vector<CompileProfile>& profiles, const CompileProfile& profile);
const CompileProfile* FindProfile(std::span<const CompileProfile> profiles, std::string_view name);

// Where the user's own profiles lie, in the user's own data folder.
std::string ProfilesFile(const std::string& dataFolder);

}  // namespace ferrowand
