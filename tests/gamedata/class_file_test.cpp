#include "gamedata/class_file.h"

#include <chrono>

#include "gamedata/class_log.h"
#include "gamedata/gamedata_fixture.h"

namespace ferrowand {
namespace {

class ClassFileTest : public GameDataTest {
 protected:
  const std::vector<ClassRecord>& Read(const std::string& name, const std::string& text) {
    log = ClassLog(&reporter);
    recorder.messages.clear();
    LoadProgress progress;
    file = ReadClassFile(dir.Write(name, text), reporter, log, progress).value_or(ClassFile());
    return file.classes;
  }
  const ClassRecord& ReadOne(const std::string& name, const std::string& text) {
    Read(name, text);
    EXPECT_EQ(file.classes.size(), 1u) << text;
    if (file.classes.empty()) file.classes.emplace_back();
    return file.classes[0];
  }
  std::string Names() const {
    std::string names;
    for (const ClassRecord& record : file.classes) names += record.classname + ' ';
    return names;
  }
  static std::string BoxOf(const ClassRecord& c) {
    std::string text;
    for (const int value : {c.minx, c.miny, c.minz, c.maxx, c.maxy, c.maxz}) {
      text += std::to_string(value) + ' ';
    }
    return text;
  }
  // As "name=default:type,value caption,...".
  static std::string KeysOf(const ClassRecord& record) {
    std::string text;
    for (const KeyDefinition& key : record.keys) {
      text += key.name + '=' + key.defaultValue + ':' + std::to_string(static_cast<int>(key.type));
      for (const KeyChoice& choice : key.choices) text += ',' + choice.value + ' ' + choice.caption;
      text += ' ';
    }
    return text;
  }
  std::string Messages() const {
    std::string texts;
    for (const ClassMessage& message : log.Messages())
      texts += Format("%s at line %lu\n", message.text.c_str(), message.line);
    return texts;
  }

  ClassLog log{nullptr};
  ClassFile file;
};

TEST_F(ClassFileTest, AnFgdTellsAllOfAClass) {
  const ClassRecord& c = ReadOne("a.FGD", R"(// @PointClass = no : "one"
@BASECLASS size(-16 -16 -24, 16 16 32) color(0 127.5 255) flags(Angle) = Sized
@pointclass Base(Sized) model({{ x == 1 -> ":a].mdl", "b" : [1, (2)] }}) halfgridsnap
  = odd_class : "It is " + "\"odd\"\n" +
  "and two lines" : "http://elsewhere"
[
  Spawnflags(Flags) = [ 1 : "ONE" : 0 : "the first" 4 : "THREE" : 1  3 : "none" ]
  wait(float) : "Wait" : -1.5 : "How long"
  skin(integer) : "Skin" : 7
  empty(string) : "Empty" : : "No default"
  bare(string)
  look(choices) readonly : "Look" : "" : "Which" = [ "" : "none" -1 : "minus" 2:"two" "b c" : "text" ]
  target(target_destination) targetname(target_source) : "Name"
  _color(color255) : "Colour" : 255 128 0
  snd(sound) on(boolean) : "On" : 1
  wild(no_such_type) : "a" + "b" : "c" + "d"
  input Kill(void) : "Removes it"
  WAIT(float) : "of equal names the last" : 2
]
)");
  EXPECT_EQ(Messages(), "Expecting one bit as the value of flag \"none\" in a.FGD at line 8\n");
  EXPECT_EQ(c.classname, "odd_class");
  EXPECT_EQ(c.description, "It is \"odd\"\r\nand two lines\r\n\r\nFlags:\r\nONE  the first");
  EXPECT_EQ(BoxOf(c), "-16 -16 -24 16 16 32 ");
  EXPECT_EQ(c.green, 0.5f);
  EXPECT_FALSE(c.isMadeOfBrushes);
  EXPECT_EQ(c.flags, (std::vector<std::string>{"ONE", "", "THREE"}));
  EXPECT_EQ(c.flagDefaults, 4u);
  EXPECT_EQ(KeysOf(c),
            "skin=7:1 empty=:0 bare=:0 look=:3, none,-1 minus,2 two,b c text target=:5 "
            "targetname=:4 _color=255 128 0:6 snd=:8 on=1:3,0 No,1 Yes wild=cd:0 WAIT=2:2 ");
  EXPECT_EQ(c.keys[1].help, "No default");
  EXPECT_EQ(c.keys[9].caption, "ab");
}

TEST_F(ClassFileTest, BasesTellWhatAClassDoesNotTheNearestFirst) {
  Read("a.fgd", R"(
@SolidClass base(Near, Far) = c [ own(string) spawnflags(flags) = [ 2 : "OWN" ] ]
@BaseClass size(1 1 1, 2 2 2) = Far [ x(string):"":"far" spawnflags(flags) = [ 1:"F1" 2:"F2":1 4:"F4":1 ] ]
@BaseClass base(Deep) = Near [ spawnflags(flags) = [ 1:"N1" : 0 : "near" ] ]
@BaseClass base(near) color(255 0 0) = Deep [ x(string):"":"deep" y(string):"":"deep" ]
@PointClass base(light, Lost) size(32 32 64) = light [ z(string) ]
@BaseClass = Light [ w(string) ]
)");
  ASSERT_EQ(Names(), "c light ");
  const ClassRecord& c = file.classes[0];
  EXPECT_EQ(KeysOf(c), "own=:0 x=far:0 y=deep:0 ");
  EXPECT_EQ(c.flags, (std::vector<std::string>{"N1", "OWN", "F4"}));
  EXPECT_EQ(c.flagDefaults, 4u) << "of a flag with its name";
  EXPECT_EQ(c.description, "Flags:\r\nN1  near");
  EXPECT_EQ(c.red, 1);
  EXPECT_TRUE(c.isMadeOfBrushes);
  EXPECT_EQ(BoxOf(c), "-8 -8 -8 8 8 8 ") << "brushes have none";
  EXPECT_EQ(BoxOf(file.classes[1]), "-16 -16 -32 16 16 32 ");
  EXPECT_EQ(Messages(),
            "Unknown base class \"light\" in a.fgd at line 6\n"
            "Unknown base class \"Lost\" in a.fgd at line 6\n");
}

TEST_F(ClassFileTest, OfEqualNamesTheLastHoldsAndPointAndBrushAreOne) {
  Read("a.fgd", R"(
@PointClass size(-1 -1 -1, 1 1 1) = both : "point" [ a(string) ]
@PointClass = twice : "first" [ a(string) b(string) ]
@SolidClass = both : "old" [ ]
@SolidClass = both : "brush" [ c(string) ]
@PointClass base(twice) = twice : "last" [ c(string) ]
)");
  ASSERT_EQ(Names(), "both twice ");
  const ClassRecord& both = file.classes[0];
  EXPECT_TRUE(both.isMadeOfBrushes && both.isPointToo);
  EXPECT_EQ(both.description, "brush");
  EXPECT_EQ(KeysOf(both), "c=:0 a=:0 ");
  EXPECT_EQ(BoxOf(both), "-1 -1 -1 1 1 1 ");
  EXPECT_EQ(file.classes[1].description, "last");
  EXPECT_EQ(KeysOf(file.classes[1]), "c=:0 a=:0 b=:0 ") << "on top of what it was";
}

TEST_F(ClassFileTest, AnErrorCostsOneClass) {
  const std::string front = "@PointClass = a [ x(string) ]\n",
                    back = "\n@PointClass = z [ x(string) ]\n";
  for (const char* wrong : {"@PointClass",
                            "@PointClass = ",
                            "@PointClass b",
                            "@PointClass base( = b []",
                            "@PointClass = b [",
                            "@PointClass = b : \"unclosed [ ]",
                            "@PointClass = b [ x(string ]",
                            "@PointClass = b [ x(string) : \"a : \"b\" ]",
                            "@PointClass = b [ x(choices) = [ 1 : ]",
                            "@PointClass = b [ x y z ]",
                            "@PointClass = b [ : ]",
                            "@PointClass = b ] ]",
                            "]]]",
                            "\"",
                            "@PointClass model({ = b [ ]",
                            "@PointClass size(1 2) = b [ ]",
                            "@",
                            "@include",
                            "@x [ \"y\" ]",
                            "@PointClass = b [ x(string) = ]",
                            "@PointClass = b [ @PointClass = c [ ]"}) {
    Read("a.fgd", front + wrong + back);
    ASSERT_GE(file.classes.size(), 2u) << wrong;
    EXPECT_EQ(KeysOf(file.classes.front()), "x=:0 ") << wrong;
    EXPECT_EQ(KeysOf(file.classes.back()), "x=:0 ") << wrong;
    EXPECT_EQ(file.classes.back().classname, "z") << wrong;
    EXPECT_LE(recorder.messages.size(), 2u) << wrong;
  }
}

TEST_F(ClassFileTest, FilesAreIncludedFromBesideTheirFileAndOnce) {
  dir.Write("deep/b.fgd", "@include \"c.fgd\"\n@include \"../a.fgd\"\n@PointClass = b []");
  dir.Write("deep/c.fgd", "@include \"b.fgd\"\n@PointClass = c []");
  Read("a.fgd",
       "@include \"deep/b.fgd\"\n@include \"deep/b.fgd\"\n@include \"no.fgd\"\n@PointClass = a []");
  EXPECT_EQ(Names(), "c b a ");
  EXPECT_EQ(Messages(), "Cannot include \"no.fgd\" in a.fgd at line 3\n");
  EXPECT_EQ(recorder.OnlyText(), "Cannot include \"no.fgd\" in a.fgd at line 3");
  ASSERT_EQ(file.sources.size(), 4u);
  EXPECT_FALSE(file.sources[3].stamp);
}

TEST_F(ClassFileTest, ADefTellsWhatItsCommentsAndBracesTell) {
  Read("a.def", R"(/* words */
/*quaked _base (1 1 1) ?
{ choice "look" ( (0, "none") ("b","text") ); default("wait", "3"); model("a}.mdl"); }
*/
/*QuakeD light ( 0, 127.5 255 ) (8 8 8) ( -8 -8 -9 )	START_OFF	- x
{ base("_base"); }
Gives light.
-------- KEYS --------
wait : seconds (default 5)
light : how much
style  0 steady, 1 flicker (0)
*/
/*QUAKED wall (0 1 0) ? OPEN
not closed
/*QUAKED last (.5 .5 .5)
*/)");
  ASSERT_EQ(Names(), "_base light wall last ");
  const ClassRecord& light = file.classes[1];
  EXPECT_EQ(light.green, 0.5f);
  EXPECT_EQ(BoxOf(light), "-8 -8 -9 8 8 8 ");
  EXPECT_EQ(light.flags, (std::vector<std::string>{"START_OFF", "x", "x"}));
  EXPECT_EQ(light.description.substr(0, 14), "Gives light.\r\n");
  EXPECT_EQ(KeysOf(light), "wait=5:2 light=:2 style=0:3,0 steady,1 flicker look=:3,0 none,b text ");
  EXPECT_TRUE(file.classes[2].isMadeOfBrushes);
  EXPECT_EQ(file.classes[2].description, "not closed");
  EXPECT_EQ(file.classes[3].red, 0.5f);
  EXPECT_EQ(Messages(), "Expecting '*/' at the end of a class in a.def at line 13\n");
}

TEST_F(ClassFileTest, ManyClassesAndDeepBasesAreQuick) {
  std::string fgd, qc, def, brackets(100000, '(');
  for (int i = 0; i < 10000; ++i) {
    const std::string n = std::to_string(i);
    fgd += "@PointClass base(c" + std::to_string(i + 1) + ", c" + n + ") = c" + n + " [ k" + n +
           "(string) ]\n";
    qc += "/*QUAKED c" + n + " (0 0 0) ?\n\"k\" a key\n";
    def += "/*QUAKED c" + n + " (0 0 0) ?\n{ choice \"k\" ((";
  }
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(Read("a.fgd", fgd + "@PointClass model(" + brackets).size(), 10000u);
  EXPECT_GT(file.classes[0].keys.size(), 100u);
  EXPECT_EQ(Read("a.qc", qc).size(), 10000u);
  EXPECT_EQ(Read("a.def", def).size(), 10000u);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

}  // namespace
}  // namespace ferrowand
