// ControlBase: what every element of a window has. Name, place, size rules, the four-state look, and the default
// reaction to events.
//
// Lengths are stored in design pixels (96 dpi); readers whose names begin with Scaled give device pixels. Positions are
// device pixels of the window's client area. UI thread only. A control may be destroyed inside any callback that one of
// its operations makes; operations that call out check for it.
#pragma once

#include "lumo/controls/control_class.h"
#include "lumo/controls/control_state.h"
#include "lumo/core/event.h"
#include "lumo/core/event_bindings.h"
#include "lumo/core/scaling.h"
#include "lumo/core/types.h"
#include "lumo/core/value_kind.h"
#include "lumo/core/weak.h"

#include <climits>
#include <memory>

namespace lumo {

class BoxBase;
class ControlBase;
class ControlText;
class IButton;
class ICheckBox;
class IControl;
class ILabel;
class IOption;
class IProgress;
class IRender;
class ITabBox;
class ProgressBar;
class Window;
struct ColorSpec;
struct ControlLooks;
struct ImageAttribute;

enum HAlign : BYTE { AlignLeft = 0, AlignCenter = 1, AlignRight = 2 };
enum VAlign : BYTE { AlignTop = 0, AlignMiddle = 1, AlignBottom = 2 };
enum CursorType : BYTE { CursorArrow = 0, CursorHand = 1, CursorIBeam = 2 };

// Called with a control that passes the filters; what it returns is the search's answer, null goes on searching.
using FindControlProc = ControlBase* (*)(ControlBase* control, void* data);
inline constexpr unsigned FindVisible = 1;
inline constexpr unsigned FindEnabled = 2;
inline constexpr unsigned FindHitTest = 4;   // data is a const POINT* in client coordinates
inline constexpr unsigned FindTopFirst = 8;  // children from last to first
inline constexpr unsigned FindSelfFirst = 0x80000000;

// The rules for a control's size, design pixels.
struct SizeRules {
  LONG width = SizeStretch;
  LONG height = SizeStretch;
  LONG minWidth = INT_MIN;  // outside 0..INT_MAX-1 = no bound
  LONG minHeight = INT_MIN;
  LONG maxWidth = INT_MAX;  // negative or INT_MAX = no bound; maxWidth SizeStretch lets an auto label wrap
  LONG maxHeight = INT_MAX;
};

class ControlBase : public WeakBase {
 public:
  ControlBase();
  ~ControlBase() override;

  // Virtual operations, in the order of their slots.
  virtual void SetWindow(Window* window, ControlBase* parent, bool init);  // with init and a parent, Init() follows
  virtual void Init();
  virtual void DoInit();
  virtual bool IsVisible() const;
  virtual void Arrange();          // re-layout after a change of this control
  virtual void ArrangeAncestor();  // re-layout of the nearest ancestor whose size does not depend on its children
  virtual ImageAttribute* GetSizingImage();  // null when no image decides the size
  virtual void SetFadeVisible(bool visible);
  virtual void SetInternVisible(bool visible);  // imposed by a hidden ancestor or a page switch
  virtual void SetVisible(bool visible);
  virtual bool IsEnabled() const;
  virtual void SetEnabled(bool enabled);
  virtual bool IsMouseEnabled() const;
  virtual void SetMouseEnabled(bool enabled);
  virtual bool IsKeyboardEnabled() const;
  virtual void SetKeyboardEnabled(bool enabled);
  virtual bool IsFocused() const;
  virtual void SetFocus();
  virtual bool IsFocusable() const;
  virtual bool IsCaptured() const;
  virtual void SetCaptured(bool captured);
  virtual bool IsActive() const;
  virtual void Activate();
  virtual ControlBase* FindControl(FindControlProc proc, void* data, unsigned flags);
  virtual void SetPos(RECT rect);
  // Stretch stays -1. `available` is in device pixels.
  virtual SIZE EstimateSize(SIZE available);
  virtual SIZE EstimateContent(SIZE available);
  virtual bool HitTest(POINT point) const;
  virtual int HandleEvent(_Msg& msg);  // the running result of the bindings: 0 when one of them ended the dispatch
  virtual bool HasStateVisuals() const;
  // Null value = absent. False when the control has no such attribute: it is passed over.
  virtual bool SetAttribute(const WCHAR* name, const WCHAR* value);
  virtual void SetSubControlAttributes(StringView name, StringView list);
  virtual void Paint(IRender* render, const RECT& dirty);
  virtual void DoPaint(IRender* render, const RECT& dirty);
  virtual void PaintChildren(IRender* render, const RECT& dirty);
  virtual void ReleaseImages();
  virtual int AttachXmlEvent(StringView kind, StringView type, StringView receiver, StringView list);  // always 0
  virtual void InvalidateLayout();
  virtual void DoEvent(_Msg& msg);
  virtual void OnMouseEnter(_Msg& msg);
  virtual void OnMouseLeave(_Msg& msg);
  virtual bool OnButtonDown(_Msg& msg);  // true = consumed
  virtual bool OnButtonUp(_Msg& msg);
  virtual void PaintBkColor(IRender* render);
  virtual void PaintBkImage(IRender* render);
  virtual void PaintStateColor(IRender* render);
  virtual void PaintStateBorder(IRender* render);
  virtual void PaintStateImages(IRender* render);
  virtual void PaintText(IRender* render);
  virtual void PaintBorder(IRender* render);

  // What it is.
  virtual ControlClass Class() const = 0;
  virtual bool IsA(ControlClass kind) const { return Class() == kind; }
  const WCHAR* ClassName() const { return NameOfClass(Class()); }
  virtual IControl* Interface() = 0;
  virtual BoxBase* AsBox() { return nullptr; }
  const BoxBase* AsBox() const { return const_cast<ControlBase*>(this)->AsBox(); }
  virtual ControlText* TextPart() { return nullptr; }
  virtual ProgressBar* ProgressPart() { return nullptr; }
  virtual ILabel* AsLabel() { return nullptr; }
  virtual IButton* AsButton() { return nullptr; }
  virtual ICheckBox* AsCheckBox() { return nullptr; }
  virtual IOption* AsOption() { return nullptr; }
  virtual IProgress* AsProgress() { return nullptr; }
  virtual ITabBox* AsTabBox() { return nullptr; }

  // The tree.
  Window* GetWindow() const { return window_; }
  ControlBase* Parent() const { return parent_; }
  // For the builder: the window that attributes ask for their scale and folder, before the tree is attached.
  void SetOwningWindow(Window* window) { window_ = window; }
  bool IsSelfOrAncestorOf(const ControlBase* control) const;
  const String& Name() const { return name_; }
  void SetName(StringView name) { name_ = name; }

  // Place and size.
  const RECT& Position() const { return position_; }
  const SizeRules& Sizes() const { return sizes_; }
  void SetFixedWidth(LONG width);  // design pixels, SizeStretch or SizeAuto; other negative numbers are ignored
  void SetFixedHeight(LONG height);
  void SetMaxWidth(LONG width);
  void SetMaxHeight(LONG height);
  void SetMinWidth(LONG width);  // negative numbers are ignored
  void SetMinHeight(LONG height);
  const RECT& Margin() const { return margin_; }
  void SetMargin(const RECT& margin);
  HAlign HorizontalAlign() const { return halign_; }
  void SetHorizontalAlign(HAlign align) { halign_ = align; }
  VAlign VerticalAlign() const { return valign_; }
  void SetVerticalAlign(VAlign align) { valign_ = align; }
  bool IsFloating() const { return float_ != 0; }
  void SetFloat(int value);
  bool NeedsMeasure() const { return needsMeasure_; }
  void SetNeedsMeasure(bool needs) { needsMeasure_ = needs; }
  bool NeedsArrange() const { return needsArrange_; }
  // This control, or the first visible one below it, containers before children, that waits for an arrangement; null
  // for none. Costs the marked paths, not the tree.
  ControlBase* FirstNeedingArrange();
  // A width in device pixels that stands in for the fixed width while a wrapping label is measured; -1 ends it.
  void ForceWidth(LONG devicePixels);

  // Device pixels by the window's scale, or the process-wide one without a window. Sentinels stay as they are.
  int Scale() const;
  LONG ScaledWidth() const;
  LONG ScaledHeight() const;
  LONG ScaledMinWidth() const;
  LONG ScaledMinHeight() const;
  LONG ScaledMaxWidth() const;
  LONG ScaledMaxHeight() const;
  RECT ScaledMargin() const;
  LONG ScaledBorderSize() const;
  RECT ScaledBorderRound() const;
  bool DependsOnContent() const { return sizes_.width == SizeAuto || sizes_.height == SizeAuto; }

  // State and looks.
  // What every control takes, and the words of a kind that has a few.
  static void ListAttributes(AttributeInfos* infos);
  static std::vector<StringView> WordsOf(ValueKind kind);
  ControlState State() const { return static_cast<ControlState>(state_); }
  void SetState(int state);
  bool IsInternVisible() const { return internVisible_; }
  bool IsShown() const { return visible_ && internVisible_; }  // IsVisible, for loops over many controls
  void SetCursorType(CursorType type) { cursor_ = type; }
  void SetAlpha(int alpha);
  int Alpha() const { return alpha_; }
  void SetCache(int cache) { cache_ = cache != 0; }
  void SetNoFocus() { noFocus_ = true; }
  bool IsNoFocus() const { return noFocus_; }
  void SetReceivePointer(bool receive) { receivePointer_ = receive; }
  void SetBorderSize(LONG size);
  void SetBorderRound(const RECT& round);
  void SetBorderColor(StringView name);
  void SetBkColor(StringView text);
  void SetBkImage(StringView text);
  void SetRenderOffset(POINT design);
  void SetStateColor(int state, StringView text);
  void SetStateBorderColor(int state, StringView text);
  enum ImageKind : BYTE { BackImages, ForeImages, SelectedBackImages, SelectedForeImages, ImageKindCount };
  void SetStateImage(ImageKind kind, int state, StringView text);
  const ControlLooks* Looks() const { return looks_.get(); }
  ImageAttribute* BackgroundImage() const;              // null when none was set
  const RECT& PaintRect() const { return paintRect_; }  // the part being painted, device pixels
  void Invalidate();

  // Texts.
  virtual String GetToolTip() const;  // the text, else the string-table text of the id
  const String& ToolTipText() const;
  void SetToolTipText(StringView text);  // every "<n>" becomes CR LF
  void SetToolTipTextId(StringView id);
  int ToolTipWidth() const { return toolTipWidth_; }  // design pixels
  void SetToolTipWidth(int width) { toolTipWidth_ = width; }
  const String& DataId() const;
  void SetDataId(StringView text);

  // Bindings by program code: composite controls to their parts, the window to its system buttons.
  void AttachEvent(int type, EventBinding binding) { codeBindings_.Add(type, std::move(binding)); }

  // Painting, for the parts that controls are made of.
  // The colour or gradient into `place`, or into its own "dest" inside that.
  void FillWith(IRender* render, const ColorSpec& color, const RECT& place) const;
  // The same without regard to "dest".
  void FillWhole(IRender* render, const ColorSpec& color, const RECT& dest) const;
  void PaintColorOfState(IRender* render, const StateValues<ColorSpec>& colors);
  void PaintImagesOfState(IRender* render, ImageKind kind);
  // Into `target`, or where the attribute says when that is null.
  void PaintImage(IRender* render, ImageAttribute& image, const RECT* target);
  // ArrangeAncestor when the size depends on the content, else Invalidate.
  void RelayoutOrInvalidate();

 protected:
  friend class BoxBase;

  // For constructors, which have nothing to arrange yet: design pixels.
  void StartWithHeight(LONG height) { sizes_.height = height; }

  ControlLooks& EditLooks();
  // Waits for an arrangement; the containers above learn of it.
  void MarkForArrange();
  SIZE Estimated() const { return estimated_; }
  void SetEstimated(SIZE size) { estimated_ = size; }

  // Offers a record to the handler and the control's own bindings when this control sent it. False when the control was
  // destroyed or a handler has ended the dispatch.
  bool RunOwnHandlers(_Msg& msg, const WeakRef<ControlBase>& self, int* result);
  void PassToParent(_Msg& msg);
  void SendMenu(const _Msg& msg);
  // The window forgets this control and what is below it.
  virtual void LeaveWindow();
  // Tells the containers above that something below them may wait for an arrangement.
  void NoteArrangeBelow();
  // The control's own part of SetPos; false when the control was destroyed by the event that it sent.
  bool MoveTo(RECT rect);

 private:
  bool ConsumeEvent(_Msg& msg);
  bool ConsumeEnter(_Msg& msg);
  void TakeFocusEvent(int type);
  void ShowCursor() const;
  void ChangeBound(LONG SizeRules::*rule, LONG value);
  void ChangeFixed(LONG SizeRules::*rule, LONG value);
  void SizeFromSource(const RECT& source);
  SIZE ImageSize(ImageAttribute* image) const;
  void PaintDirect(IRender* render, const RECT& dirty);
  void PaintThroughCopy(IRender* render, const RECT& dirty);
  void FillCopy(IRender* copy, const RECT& painted, bool with_children);
  void OutlineWith(IRender* render, StringView color_name) const;
  void ChangeColor(ColorSpec& color, StringView text);
  void InvalidateMoved(const RECT& old);
  void InvalidateRectangle(const RECT& rect) const;
  POINT ScrollShift() const;
  void StopBackgroundAnimation();
  bool FindPasses(void* data, unsigned flags) const;

  Window* window_ = nullptr;
  ControlBase* parent_ = nullptr;
  RECT position_ = {};
  SIZE estimated_ = {};
  SizeRules sizes_;
  RECT margin_ = {};
  LONG forcedWidth_ = -1;
  int float_ = 0;
  int state_ = StateNormal;
  HAlign halign_ = AlignLeft;
  VAlign valign_ = AlignTop;
  CursorType cursor_ = CursorArrow;
  bool visible_ : 1 = true;
  bool internVisible_ : 1 = true;
  bool needsMeasure_ : 1 = true;
  bool needsArrange_ : 1 = true;
  bool arrangeBelow_ : 1 = false;  // some control below may need arranging
  bool enabled_ : 1 = true;
  bool mouseEnabled_ : 1 = true;
  bool keyboardEnabled_ : 1 = true;
  bool focused_ : 1 = false;
  bool captured_ : 1 = false;
  bool inPositionNotify_ : 1 = false;
  bool noFocus_ : 1 = false;
  bool receivePointer_ : 1 = true;
  bool cache_ : 1 = false;
  bool dirty_ : 1 = false;
  LONG borderSize_ = 0;
  int toolTipWidth_ = 300;
  int alpha_ = 255;
  RECT paintRect_ = {};
  String name_;
  std::unique_ptr<ControlLooks> looks_;  // made with the first attribute that needs it
  EventBindings codeBindings_;
  EventBindings layoutBindings_;
};

}  // namespace lumo
