// The file dialog's class, which the drawing library brings: a program that does not draw has none.
#include "winhost/com/class_table.h"
#include "winhost/window/drawing.h"

namespace winhost {

HRESULT MakeFileOpenDialog(REFIID iid, void** object) {
  const auto make = TheDrawing().make_file_open_dialog;
  return make ? make(iid, object) : REGDB_E_CLASSNOTREG;
}

}  // namespace winhost
