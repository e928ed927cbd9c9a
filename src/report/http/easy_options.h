// Options of curl's easy interface, by curl's numbers: 0… take a long, 10000… a pointer, 20000… a function.
#pragma once

namespace vanta {

enum EasyOption : int {
  EasyProgressOff = 43,
  EasyNoBody = 44,
  EasyFollowLocation = 52,
  EasyTimeoutMs = 155,  // of the whole transfer
  EasyConnectTimeoutMs = 156,
  EasyWriteData = 10001,
  EasyUrl = 10002,
  EasyHttpHeader = 10023,
  EasyHttpPost = 10024,
  EasyHeaderData = 10029,
  EasyProgressData = 10057,
  EasyWriteFunction = 20011,
  EasyProgressFunction = 20056,
  EasyHeaderFunction = 20079,
};

// Of a form's fields: name and content are copied; the end closes the arguments.
enum EasyFormOption : int {
  EasyFormCopyName = 1,
  EasyFormCopyContents = 4,
  EasyFormEnd = 17,
};

}  // namespace vanta
