// The public faces of controls: what applications and handlers see. Every operation forwards to the control's own.
#pragma once

#include "lumo/core/types.h"

#include <string>

namespace lumo {

class ControlBase;
class Window;

class IControl {
 public:
  virtual ControlBase* AsControl() = 0;

  const String& GetName();
  Window* GetHostWindow();
  RECT GetPosition();
  void SetAttribute(const WCHAR* name, const WCHAR* value);
  bool IsVisible();
  void SetVisible(bool visible);
  void SetFadeVisible(bool visible);
  bool IsEnabled();
  void SetEnabled(bool enabled);
  bool IsMouseEnabled();
  void SetMouseEnabled(bool enabled);
  bool IsKeyboardEnabled();
  void SetKeyboardEnabled(bool enabled);
  bool IsFocused();
  void SetFocus();
  void Activate();
  void Invalidate();
  void SetBkImage(StringView image);
  String GetToolTip();
  void SetToolTipText(StringView text);
  const String& GetDataId();

 protected:
  ~IControl() = default;
};

class ILabel : public IControl {
 public:
  // The text, or the string-table text of the text id when it is empty.
  virtual String GetText() const = 0;
  virtual void SetText(StringView text) = 0;
  virtual void SetTextId(StringView id) = 0;
  std::string GetUtf8Text() const;
  void SetUtf8Text(std::string_view text);

 protected:
  ~ILabel() = default;
};

class IButton : public ILabel {
 protected:
  ~IButton() = default;
};

class ICheckBox : public IButton {
 public:
  virtual bool IsSelected() const = 0;
  // With `notify`, "select" or "unselect" is sent when it changed.
  virtual void SetSelected(bool selected, bool notify) = 0;

 protected:
  ~ICheckBox() = default;
};

class IOption : public IButton {
 public:
  virtual bool IsSelected() const = 0;
  // Selecting unselects the others of the group, each of which sends "unselect".
  virtual void SetSelected(bool selected, bool notify) = 0;
  virtual const String& GetGroup() const = 0;
  virtual void SetGroup(StringView name) = 0;

 protected:
  ~IOption() = default;
};

class IProgress : public ILabel {
 public:
  virtual double GetValue() const = 0;
  virtual void SetValue(double value) = 0;  // clamped when painted
  virtual void SetMax(double max) = 0;      // truncated

 protected:
  ~IProgress() = default;
};

// A face with a container's operations; see BoxBase for what they do.
template <class I>
class IContainer : public I {
 public:
  int GetCount();
  ControlBase* GetItemAt(int index);
  int GetItemIndex(const ControlBase* child);
  bool SetItemIndex(ControlBase* child, int index);
  bool Add(ControlBase* child);
  bool AddAt(ControlBase* child, int index);
  bool Remove(ControlBase* child);
  bool RemoveAt(int index);
  void RemoveAll();

 protected:
  ~IContainer() = default;
};

class IBox : public IContainer<IControl> {
 protected:
  ~IBox() = default;
};
class ILabelBox : public IContainer<ILabel> {
 protected:
  ~ILabelBox() = default;
};
class IButtonBox : public IContainer<IButton> {
 protected:
  ~IButtonBox() = default;
};
class ICheckBoxBox : public IContainer<ICheckBox> {
 protected:
  ~ICheckBoxBox() = default;
};
class IOptionBox : public IContainer<IOption> {
 protected:
  ~IOptionBox() = default;
};

class ITabBox : public IContainer<IControl> {
 public:
  virtual int GetSelected() const = 0;  // -1 = none
  virtual bool Select(int index) = 0;
  virtual bool SelectPage(const ControlBase* page) = 0;
  virtual bool SelectPage(StringView name) = 0;  // the first control of that name below, if it is a page

 protected:
  ~ITabBox() = default;
};

}  // namespace lumo
