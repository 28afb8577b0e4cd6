#include "gamedata/class_help.h"

#include <gtest/gtest.h>

namespace ferrowand {
namespace {

// "name=default:type[value caption,...]" of every key.
std::string KeysIn(const std::string& help, const std::vector<std::string>& flags = {}) {
  std::string text;
  for (const KeyDefinition& key : KeysOfHelp(help, flags)) {
    text += key.name + '=' + key.defaultValue + ':' + std::to_string(static_cast<int>(key.type));
    for (const KeyChoice& choice : key.choices) text += ',' + choice.value + ' ' + choice.caption;
    text += ' ';
  }
  return text;
}

TEST(ClassHelp, KeysAreFoundByTheCustomsOfHelpTexts) {
  struct Case {
    const char* help;
    const char* keys;
  };
  const Case cases[] = {
      {"\"speed\"\tmovement speed (100 default)", "speed=100:2 "},
      {"\"wait\" : Seconds (.2 default, -1 = never)\r\n\"lip\" lip (default 8)",
       "wait=.2:2 lip=8:2 "},
      {"\"speed\"\t\toverride the default 40 speed", "speed=40:2 "},
      {"\"angle\" determines the direction\n\"target\" fires\n\"targetname\" name",
       "angle=:7 target=:5 targetname=:4 "},
      {"\"strange\" a 5\n\"more\" of default 7", "strange=:0 more=7:2 "},
      {"\"sounds\"\r\n0)\tsilent\r\n1)\tstone\r\n4)\r\n", "sounds=:3,0 silent,1 stone,4  "},
      {"Set \"sounds\" to one of the following:\n1) base\n2) chain", "sounds=:3,1 base,2 chain "},
      {"sounds\n1)\tratchet", "sounds=:3,1 ratchet "},
      {"World Types:\n0: medieval\n1: metal", "worldtype=:3,0 medieval,1 metal "},
      {"speed\tdefault 100\ndmg\t\tdefault\t2", "speed=100:2 dmg=2:2 "},
      {"wait  = # of seconds\nt_width = override\nno_shoot = a flag", "wait=:2 t_width=:2 "},
      {"Default light value is 300\nDefault style is 0", "light=300:2 style=0:1 "},
      {"\"light\" how bright (200 default)\nDefault light value is 300", "light=200:2 "},
      {"If \"health\" is set, it says \"sequence complete\".\nSet message to the name.",
       "health=:2 message=:0 "},
      {"Keys:\nwait   seconds (3)\n       and more\nsounds  0 none, 1 stone (0)\nodd  where (1 2 "
       "3)\n"
       "\nwords  of no key (4)",
       "wait=3:2 sounds=0:3,0 none,1 stone odd=1 2 3:0 "},
      {"-------- KEYS --------\nlight : the value\n-------- SPAWNFLAGS --------\nODD : flag\n1) no",
       "light=:2 "},
      {"speed is what counts here\n2) no choice of it\n\"12\" and \"two words\" are no keys\n:",
       ""},
  };
  for (const Case& c : cases) EXPECT_EQ(KeysIn(c.help, {"NO_SHOOT"}), c.keys) << c.help;
}

TEST(ClassHelp, AKeyKeepsItsHelp) {
  const auto keys =
      KeysOfHelp("If \"health\" is set.\nKeys:\nlip    units\n       that stay\n", {});
  ASSERT_EQ(keys.size(), 2u);
  EXPECT_EQ(keys[0].help, "If \"health\" is set.");
  EXPECT_EQ(keys[1].help, "units that stay");
}

}  // namespace
}  // namespace ferrowand
