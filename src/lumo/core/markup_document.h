// The reader of the skin's markup: one text, an index of its elements, and cursors that move over the index.
//
// Reading always yields an index, whatever the text; what is wrong with it is logged, and the only verdict is a
// boolean. Names and values are cut out of the text, and values decoded, when they are asked for. Nesting of any depth
// is read without recursion. One document belongs to one thread.
#pragma once

#include "base/unique.h"
#include "lumo/core/markup_index.h"
#include "lumo/core/markup_tokenizer.h"
#include "lumo/core/types.h"

namespace lumo {

class MarkupDocument {
 public:
  MarkupDocument() = default;
  MarkupDocument(const MarkupDocument&) = delete;
  MarkupDocument& operator=(const MarkupDocument&) = delete;

  // Replaces the document and indexes the text. True when it is well-formed: every element ends, every end tag has its
  // element, and there is exactly one element at top level. An empty text is not, and logs nothing. False, leaving
  // everything as it was, while a file is open.
  bool LoadText(String text);

  // Reads a whole file from disk, finds its encoding (markup_encoding.h) and goes on as LoadText does. False when it
  // cannot be opened or read. The same as OpenFile and ReadFileWhole.
  bool LoadFile(const String& path);
  // Opens a file and keeps it open: until ReadFileWhole the document is in file mode, where moving and loading are
  // refused and the cursors stand still.
  bool OpenFile(const String& path);
  bool ReadFileWhole();

  // All cursors before the root.
  void Rewind();
  // Moves the main position to the next element of that name under the parent position; to the first one when there is
  // no main position yet. An empty name is any. False leaves the cursors alone; true clears the child position.
  bool NextElement(StringView name = {});
  // The same with the child position among the children of the main position, which becomes the next element when
  // there is none yet.
  bool NextChild(StringView name = {});
  // Parent := main, main := child, child := none; nothing when there is no main position.
  void EnterChild();
  // The reverse.
  void LeaveElement();
  // Moves the main position to the next node of any kind under the parent position; elements as NextElement does, for
  // others the element position stays and TagName says what it is. MarkupNode::None at the end.
  MarkupNode NextNode();

  // The name at the main position, "" when there is none. The view lives until the next load.
  StringView TagName() const;
  // The n-th attribute, from 0, of the element at the main position; false, leaving both alone, when it has fewer. The
  // value is decoded. Asking in order is linear in the tag's length.
  bool AttributeAt(size_t n, String* name, String* value);
  // The same without copies: the views live until the next call that is not const.
  bool AttributeAt(size_t n, StringView* name, StringView* value);

  // One small element a problem, named after it (markup_log.h).
  const String& ParseLog() const { return log_.Text(); }

  // How the last file was encoded: "UTF-8", "UTF-16LE", "UTF-16BE" or what the document declared; "" for texts.
  const String& Encoding() const { return encoding_; }
  const String& Text() const { return text_; }

 private:
  bool Index(String text);
  bool InFileMode() const { return static_cast<bool>(file_); }
  const ElementRecord& At(LONG element) const { return index_.elements[static_cast<size_t>(element)]; }
  LONG FindFrom(LONG element, StringView name) const;
  void MoveTo(LONG parent, LONG main, LONG child);

  String text_;
  MarkupIndex index_;  // without elements before the first load
  MarkupLog log_;
  String encoding_;
  vanta::UniqueFile file_;  // open: the document is in file mode
  LONG parent_ = 0, main_ = 0, child_ = 0;
  MarkupToken node_;  // what NextNode stands on, when that is no element
  String decoded_;    // the value that AttributeAt gave out last, when it had to be decoded
};

}  // namespace lumo
