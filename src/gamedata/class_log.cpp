#include "gamedata/class_log.h"

#include <utility>

#include "base/report.h"

namespace ferrowand {

void ClassLog::Add(const std::string& kind, std::string_view place, unsigned long line,
                   std::string_view subject) {
  ++count_;
  const bool isNewKind = kinds_.insert(kind).second;
  if (!isNewKind && messages_.size() >= MAXKEPT) return;
  std::string text = kind;
  if (!subject.empty()) text.append(" \"").append(subject) += '"';
  text.append(" in ").append(place);
  if (isNewKind && reporter_) reporter_->Parsing("%s at line %lu", text.c_str(), line);
  if (messages_.size() < MAXKEPT) messages_.push_back({std::move(text), line});
}

}  // namespace ferrowand
