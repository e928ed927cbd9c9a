// Qt's raster painter on the scene of paint_bench.
//   paint_peer DIR              prints {"full_us", "step_us"}, with the pictures that `paint_bench pictures DIR` wrote
//   paint_peer DIR look FILE    writes the scene as it was painted: premultiplied BGRA, to be looked at
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>
#include <string>

#include "tests/bench/measure.h"
#include "tests/bench/scene.h"

namespace {

QRect RectOf(const scene::Box& box) { return {box.left, box.top, box.right - box.left, box.bottom - box.top}; }

QImage Load(const QString& path, const scene::Box& box) {
  QFile file(path);
  const QSize size = RectOf(box).size();
  const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  if (bytes.size() != size.width() * size.height() * 4) qFatal("%s is not that picture", qPrintable(path));
  const QImage straight(reinterpret_cast<const uchar*>(bytes.constData()), size.width(), size.height(),
                        QImage::Format_ARGB32);
  return straight.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

class Scene {
 public:
  explicit Scene(const QString& folder)
      : art_(Load(folder + "/art.bgra", scene::kArt)), icon_(Load(folder + "/icon.bgra", scene::kIcons[0])) {
    surface_.fill(0);
    font_.setPixelSize(scene::kFontPixels);
    font_.setHintingPreference(QFont::PreferNoHinting);
  }

  void Paint(const scene::Box& dirty, int percent) {
    QPainter painter(&surface_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font_);
    painter.setClipRect(RectOf(dirty));
    const auto meets = [&](const scene::Box& box) { return scene::Meet(box, dirty); };
    Fill(painter, scene::kGround);
    if (meets(scene::kArt)) painter.drawImage(scene::kArt.left, scene::kArt.top, art_);
    for (const scene::Filling& button : scene::kButtons) {
      if (meets(button.box)) Fill(painter, button);
    }
    for (const scene::Box& place : scene::kIcons) {
      if (meets(place)) painter.drawImage(place.left, place.top, icon_);
    }
    for (const scene::Writing& writing : scene::kTexts) {
      if (meets(writing.box)) Text(painter, writing);
    }
    if (meets(scene::kStep)) {
      Fill(painter, scene::kTrack);
      FillBar(painter, percent);
      Text(painter, scene::StatusAt(percent));
    }
  }

  const QImage& surface() const { return surface_; }

 private:
  static void Fill(QPainter& painter, const scene::Filling& filling) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgba(filling.color));
    painter.drawRoundedRect(QRectF(RectOf(filling.box)), filling.radius, filling.radius);
    if (!filling.outline) return;
    painter.setPen(QPen(QColor::fromRgba(filling.outline), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(RectOf(filling.box)).adjusted(.5, .5, -.5, -.5), filling.radius, filling.radius);
  }
  static void FillBar(QPainter& painter, int percent) {
    const QRectF bar(RectOf(scene::BarAt(percent)));
    QLinearGradient gradient(bar.topLeft(), bar.topRight());
    gradient.setColorAt(0, QColor::fromRgba(scene::kBarFrom));
    gradient.setColorAt(1, QColor::fromRgba(scene::kBarTo));
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(bar, 2, 2);
  }
  void Text(QPainter& painter, const scene::Writing& writing) {
    painter.setPen(QColor::fromRgba(scene::kTextColor));
    painter.drawText(RectOf(writing.box), Qt::AlignCenter | Qt::TextSingleLine, QString::fromUtf16(writing.text));
  }

  QImage surface_{scene::kWidth, scene::kHeight, QImage::Format_ARGB32_Premultiplied};
  QImage art_, icon_;
  QFont font_{"WenQuanYi Micro Hei"};
};

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc != 2 && !(argc == 4 && std::string(argv[2]) == "look")) {
    std::fprintf(stderr, "paint_peer DIR [look FILE]\n");
    return 1;
  }
  Scene scene(argv[1]);
  scene.Paint(scene::kAll, 37);
  if (argc == 4) {
    QFile file(argv[3]);
    const auto* const pixels = reinterpret_cast<const char*>(scene.surface().constBits());
    return file.open(QIODevice::WriteOnly) && file.write(pixels, scene.surface().sizeInBytes()) > 0 ? 0 : 1;
  }
  const bench::Turns turns = bench::TakeTurns([&](int i) { scene.Paint(scene::kAll, 37 + i % 2); },
                                              [&](int i) { scene.Paint(scene::kStep, 37 + i % 2); });
  std::printf("{\"full_us\": %.2f, \"step_us\": %.2f}\n", turns.full_us, turns.step_us);
  return 0;
}
