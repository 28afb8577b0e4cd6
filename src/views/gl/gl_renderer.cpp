#include "views/gl/gl_renderer.h"

#include <algorithm>
#include <array>

#include "platform/display.h"
#include "views/gl/gl_context.h"

namespace ferrowand {
namespace {

constexpr GLdouble PICK_SIZE = 4;          // pixels, square
constexpr std::size_t PICK_BUFFER = 5000;  // entries of the driver's
constexpr std::size_t HIT_ENTRIES = 4;     // of a hit with one name
constexpr GLuint NO_NAME = static_cast<GLuint>(-1);

void LoadProjection(const CameraPicture& picture) {
  const auto [width, height] = picture.size;
  gluPerspective(FIELD_OF_VIEW, static_cast<GLdouble>(width) / height, NEAR_CLIP,
                 std::max(picture.backClip, 2 * NEAR_CLIP));
}

void LoadView(const CameraPose& pose) {
  const DVec3 at = pose.eye + pose.direction;
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  gluLookAt(pose.eye.x, pose.eye.y, pose.eye.z, at.x, at.y, at.z, pose.up.x, pose.up.y, pose.up.z);
}

void SetMode(RenderMode mode) {
  glPolygonMode(GL_FRONT_AND_BACK, IsOfLines(mode) ? GL_LINE : GL_FILL);
  glHint(GL_PERSPECTIVE_CORRECTION_HINT, mode == RenderMode::Textured ? GL_NICEST : GL_FASTEST);
}

void Switch(GLenum what, bool on) {
  if (on) {
    glEnable(what);
  } else {
    glDisable(what);
  }
}

void CallLists(const std::vector<GLuint>& lists) {
  glCallLists(static_cast<GLsizei>(lists.size()), GL_UNSIGNED_INT, lists.data());
}

void AddPolygon(const Shape& shape, const ShapePolygon& polygon) {
  glColor3ub(polygon.colour.red, polygon.colour.green, polygon.colour.blue);
  for (std::uint32_t i = polygon.begin; i < polygon.end; ++i) {
    const ShapePoint& point = shape.points[i];
    glTexCoord2f(point.s, point.t);
    glVertex3f(point.at.x, point.at.y, point.at.z);
  }
}

// Four-sided ones, which most are, go to the driver at once.
bool IsFourSided(const ShapePolygon& polygon) {
  return polygon.end - polygon.begin == 4;
}

// All of them four-sided, or none.
void AddPolygons(const Shape& shape, std::span<const ShapePolygon* const> polygons) {
  if (IsFourSided(*polygons.front())) {
    glBegin(GL_QUADS);
    for (const ShapePolygon* polygon : polygons) AddPolygon(shape, *polygon);
    glEnd();
    return;
  }
  for (const ShapePolygon* polygon : polygons) {
    glBegin(GL_POLYGON);
    AddPolygon(shape, *polygon);
    glEnd();
  }
}

}  // namespace

GlRenderer::GlRenderer(GlContext& context, const Palette& palette)
    : context_(context), textures_(palette) {}

GlRenderer::~GlRenderer() {
  GlRenderer::DropAll();
}

bool GlRenderer::Prepare() {
  if (!context_.MakeCurrent()) return false;
  if (!isSetUp_) SetUp();
  isSetUp_ = true;
  return true;
}

void GlRenderer::SetUp() {
  glEnable(GL_CULL_FACE);
  glCullFace(GL_BACK);
  glFrontFace(GL_CCW);
  for (const GLenum what : {GL_FOG, GL_LIGHTING, GL_LINE_SMOOTH, GL_POINT_SMOOTH, GL_COLOR_LOGIC_OP,
                            GL_ALPHA_TEST, GL_BLEND, GL_COLOR_MATERIAL, GL_NORMALIZE}) {
    glDisable(what);
  }
  glClearColor(0, 0, 0, 0);
  glClearDepth(1.0);
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LESS);
  glShadeModel(GL_FLAT);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
}

void GlRenderer::DropParts(std::vector<Part>& parts) {
  for (const Part& part : parts) glDeleteLists(part.list, 1);
  parts.clear();
}

void GlRenderer::SetShape(ShapeName name, const Shape& shape) {
  if (!Prepare()) return;
  if (name >= shapes_.size()) shapes_.resize(name + 1);
  std::vector<Part>& parts = shapes_[name];
  DropParts(parts);
  std::vector<const ShapePolygon*> sorted;
  for (const ShapePolygon& polygon : shape.polygons) sorted.push_back(&polygon);
  const auto kindOf = [](const ShapePolygon* polygon) {
    return std::pair(polygon->texture, IsFourSided(*polygon));
  };
  std::ranges::stable_sort(sorted, std::less<>(), kindOf);
  for (auto from = sorted.begin(); from != sorted.end();) {
    const auto kind = kindOf(*from);
    const auto to = std::find_if(
        from, sorted.end(), [&](const ShapePolygon* polygon) { return kindOf(polygon) != kind; });
    parts.push_back({kind.first, glGenLists(1)});
    glNewList(parts.back().list, GL_COMPILE);
    AddPolygons(shape, {from, to});
    glEndList();
    from = to;
  }
}

void GlRenderer::DropShape(ShapeName name) {
  if (name < shapes_.size() && Prepare()) DropParts(shapes_[name]);
}

void GlRenderer::DropAll() {
  if (!isSetUp_ || !context_.MakeCurrent()) return;
  for (std::vector<Part>& parts : shapes_) DropParts(parts);
  shapes_.clear();
  textures_.DropAll();
  batchOf_.clear();
  batches_.clear();
}

void GlRenderer::CallAll(std::span<const ShapeName> names) {
  lists_.clear();
  for (const ShapeName name : names) {
    for (const Part& part : shapes_[name]) lists_.push_back(part.list);
  }
  CallLists(lists_);
}

// Sorted by texture: changing that costs more than all else.
void GlRenderer::DrawTextured(std::span<const ShapeName> names) {
  for (const ShapeName name : names) {
    for (const Part& part : shapes_[name]) {
      const auto [found, isNew] = batchOf_.try_emplace(part.texture, batches_.size());
      if (isNew) batches_.push_back({part.texture, {}});
      batches_[found->second].lists.push_back(part.list);
    }
  }
  for (Batch& batch : batches_) {
    if (batch.lists.empty()) continue;
    Switch(GL_TEXTURE_2D, batch.texture != nullptr);
    if (batch.texture) textures_.Bind(*batch.texture);
    CallLists(batch.lists);
    batch.lists.clear();
  }
}

// Over what is there already, twice as bright where the tint is full. The lists bring colours of
// their own along, which a texture of one texel covers.
void GlRenderer::DrawTint(std::span<const ShapeName> names, Colour tint, RenderMode mode) {
  if (names.empty()) return;
  glEnable(GL_TEXTURE_2D);
  textures_.BindColour(tint);
  glDepthFunc(GL_LEQUAL);
  if (!IsOfLines(mode)) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_DST_COLOR, GL_SRC_COLOR);
  }
  CallAll(names);
  glDisable(GL_BLEND);
  glDepthFunc(GL_LESS);
}

// All edges, also those behind something, which are darker.
void GlRenderer::DrawEdges(std::span<const ShapeName> names, Colour hidden, Colour seen) {
  if (names.empty()) return;
  glEnable(GL_TEXTURE_2D);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glDisable(GL_CULL_FACE);
  glDepthMask(GL_FALSE);
  glDepthFunc(GL_GREATER);
  textures_.BindColour(hidden);
  CallAll(names);
  glDepthFunc(GL_LEQUAL);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-1, -1);
  glLineWidth(static_cast<GLfloat>(Scaled(SELECTION_EDGE_WIDTH)));
  textures_.BindColour(seen);
  CallAll(names);
  glLineWidth(1);
  glDisable(GL_POLYGON_OFFSET_LINE);
  glDepthFunc(GL_LESS);
  glDepthMask(GL_TRUE);
  glEnable(GL_CULL_FACE);
}

void GlRenderer::Draw(const CameraPicture& picture) {
  if (!Prepare()) return;
  glViewport(0, 0, picture.size.width, picture.size.height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  LoadProjection(picture);
  LoadView(picture.pose);
  Switch(GL_DITHER, picture.dither);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  SetMode(picture.mode);
  if (IsTextured(picture.mode)) {
    DrawTextured(picture.seen);
  } else {
    glDisable(GL_TEXTURE_2D);
    CallAll(picture.seen);
  }
  DrawTint(picture.tinted, ENTITY_TINT, picture.mode);
  DrawTint(picture.selected, SELECTION_TINT, picture.mode);
  DrawEdges(picture.selected, HIDDEN_EDGES, SELECTION_EDGES);
  for (const auto& [name, colour] : picture.outlines) DrawEdges({&name, 1}, colour, colour);
  if (!picture.preview) return;
  glTranslatef(picture.preview->x, picture.preview->y, picture.preview->z);
  DrawEdges(picture.selected, PREVIEW_EDGES, PREVIEW_EDGES);
}

void GlRenderer::CollectHits(std::span<const ShapeName> names,
                             std::vector<std::pair<GLuint, ShapeName>>& hits) {
  std::array<GLuint, PICK_BUFFER> buffer;
  glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
  glRenderMode(GL_SELECT);
  glInitNames();
  glPushName(NO_NAME);
  for (const ShapeName name : names) {
    glLoadName(name);
    for (const Part& part : shapes_[name]) glCallList(part.list);
  }
  const GLint count = glRenderMode(GL_RENDER);
  for (GLint i = 0; i < count; ++i) {
    const GLuint* hit = &buffer[static_cast<std::size_t>(i) * HIT_ENTRIES];
    hits.emplace_back(hit[1], hit[3]);
  }
}

std::vector<ShapeName> GlRenderer::Pick(const CameraPicture& picture, Pixel at) {
  if (!Prepare()) return {};
  GLint viewport[4] = {0, 0, picture.size.width, picture.size.height};
  glViewport(0, 0, picture.size.width, picture.size.height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluPickMatrix(at.x, picture.size.height - at.y, PICK_SIZE, PICK_SIZE, viewport);
  LoadProjection(picture);
  LoadView(picture.pose);
  SetMode(picture.mode);
  glDisable(GL_TEXTURE_2D);
  // A shape makes one hit at the most: so many never overflow the buffer.
  constexpr std::size_t ROUND = PICK_BUFFER / HIT_ENTRIES;
  std::vector<std::pair<GLuint, ShapeName>> hits;
  const auto collect = [&] {
    for (std::size_t from = 0; from < picture.seen.size(); from += ROUND) {
      CollectHits(picture.seen.subspan(from, std::min(ROUND, picture.seen.size() - from)), hits);
    }
  };
  collect();
  // Between the lines of what is drawn by them the faces count.
  if (hits.empty() && IsOfLines(picture.mode)) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    collect();
  }
  std::ranges::stable_sort(hits, std::less<>(), &std::pair<GLuint, ShapeName>::first);
  std::vector<ShapeName> names;
  names.reserve(hits.size());
  for (const auto& [depth, name] : hits) names.push_back(name);
  return names;
}

}  // namespace ferrowand
