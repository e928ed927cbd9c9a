// A markup file of a skin, read as the library reads it, that knows on which line things stand.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lumo/core/markup_document.h"
#include "tools/vantakit/findings.h"

namespace vantakit {

class MarkupSource {
 public:
  // `bytes` as the package holds them: UTF-8 up to the first NUL.
  MarkupSource(std::string name, std::string_view bytes);

  const std::string& Name() const { return name_; }
  bool IsWellFormed() const { return well_formed_; }
  lumo::MarkupDocument& Document() { return document_; }
  const lumo::MarkupDocument& Document() const { return document_; }

  int LineAt(std::size_t offset) const;  // in UTF-16 units
  // Of a tag's or an attribute's name that the document gave out as a view.
  int LineOf(lumo::StringView name) const;
  Finding At(int line, std::string message, Finding::Severity severity = Finding::Error) const {
    return {name_, std::move(message), line, severity};
  }

 private:
  std::string name_;
  lumo::MarkupDocument document_;
  bool well_formed_;
  std::vector<std::size_t> line_starts_;
};

// What is wrong with the text itself: elements that do not end, a lone "<", text that nobody reads.
void FindMarkupFaults(const MarkupSource& source, Findings* findings);

}  // namespace vantakit
