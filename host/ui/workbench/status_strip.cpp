// Shows the state of the active drawing.
#include "host/ui/workbench/status_strip.h"

#include "host/editor/command_processor.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/layer_isolation.h"
#include "host/editor/number_text.h"
#include "host/ui/theme/theme.h"
#include "host/ui/theme/theme_colors.h"
#include "host/ui/workbench/dialogue.h"
#include "host/ui/workbench/elided_label.h"
#include "host/ui/workbench/prompt_text.h"
#include "sdk/hxdbsymtb.h"

#include <QLabel>
#include <QPainter>
#include <QToolButton>

namespace korvex {

namespace {

constexpr int kHintMilliseconds = 6000;
constexpr int kSwatch = 12;
constexpr int kGap = 8;
constexpr int kMostLayerCharacters = 32;

QColor colorOf(const HxCmColor& color) {
    return color.isByColor() ? QColor(color.red(), color.green(), color.blue())
                             : QColor(QRgb(hxedGetRGB(color.colorIndex())));
}

QIcon swatch(const QColor& color, qreal ratio) {
    const int size = qRound(kSwatch * ratio);
    QPixmap pixmap(size, size);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(color);
    QPainter painter(&pixmap);
    painter.setPen(themeColors().border);
    painter.drawRect(0, 0, kSwatch - 1, kSwatch - 1);
    return QIcon(pixmap);
}

QToolButton* makeButton(const char* name) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QLabel* makeLabel(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace

StatusStrip::StatusStrip(Dialogue& dialogue, QWidget* parent)
    : QStatusBar(parent), m_dialogue(dialogue), m_command(new ElidedLabel),
      m_coordinates(makeLabel("StatusCoordinates")), m_layer(makeButton("StatusLayer")),
      m_space(makeButton("StatusSpace")), m_isolated(makeButton("StatusIsolated")) {
    setObjectName("StatusBar");
    m_command->setAccessibleName(tr("Running command"));
    m_command->setObjectName("StatusCommand");
    m_coordinates->setAccessibleName(tr("Coordinates of the cursor"));
    m_coordinates->setToolTip(tr("Where the cursor is, in the current space"));
    m_coordinates->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_coordinates->setContentsMargins(0, 0, kGap, 0);
    m_coordinates->setMinimumWidth(kGap + fontMetrics().horizontalAdvance("-0000000.0000, -0000000.0000"));
    m_layer->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_layer->setIconSize(QSize(kSwatch, kSwatch));
    addWidget(m_command, 1);
    addPermanentWidget(m_coordinates);
    m_isolated->setText(tr("Isolated"));
    m_isolated->setToolTip(
        tr("Some layers are isolated. Click to bring the others back as they were (LAYUNISO)."));
    m_isolated->setAccessibleName(tr("Layers are isolated: bring the others back"));
    addPermanentWidget(m_isolated);
    addPermanentWidget(m_layer);
    addPermanentWidget(m_space);
    m_hintTime.setSingleShot(true);
    m_hintTime.setInterval(kHintMilliseconds);
    connect(&m_hintTime, &QTimer::timeout, this, &StatusStrip::refreshCommand);
    connect(m_layer, &QToolButton::clicked, this, [this] { m_dialogue.run("LAYER\n"); });
    connect(m_isolated, &QToolButton::clicked, this, [this] { m_dialogue.run("LAYUNISO\n"); });
    connect(m_space, &QToolButton::clicked, this, &StatusStrip::switchSpace);
    refresh();
}

void StatusStrip::refresh() {
    refreshLayer();
    refreshSpace();
    refreshIsolation();
    refreshCommand();
}

void StatusStrip::refreshIsolation() {
    const Document* const document = editor().documents().active();
    m_isolated->setVisible(document && isIsolated(*document->database()));
}

void StatusStrip::refreshLayer() {
    const Document* const document = editor().documents().active();
    m_layer->setVisible(document != nullptr);
    if (!document) {
        return;
    }
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(document->database()->clayer(), HxDb::kForRead);
    CStdStr<wchar_t> layerName;
    if (!layer || layer->getName(layerName) != Hx::eOk) {
        return;
    }
    const QString name = QString::fromStdWString(layerName);
    const QColor color = colorOf(layer->color());
    const QString shown =
        name.size() > kMostLayerCharacters ? name.left(kMostLayerCharacters - 1) + QChar(0x2026) : name;
    const QString text = ' ' + QString(shown).replace('&', "&&");
    if (m_layer->text() != text || m_layer->property("swatch") != color) {
        m_layer->setText(text);
        m_layer->setIcon(swatch(color, devicePixelRatioF()));
        m_layer->setProperty("swatch", color);
        m_layer->setToolTip(tr("Current layer: %1. Click for the Layer Properties Manager.").arg(name));
        m_layer->setAccessibleName(tr("Current layer: %1").arg(name));
    }
}

void StatusStrip::refreshSpace() {
    const Document* const document = editor().documents().active();
    m_space->setVisible(document != nullptr);
    if (!document) {
        return;
    }
    const HxDbDatabase& database = *document->database();
    const bool isLayout = !database.tilemode();
    const bool isPaper = isLayout && database.cvport() <= 1;
    m_space->setText(isPaper ? tr("PAPER") : tr("MODEL"));
    m_space->setEnabled(isLayout);
    m_space->setToolTip(!isLayout ? tr("Model space. Layouts are reached by the tabs below the drawing.")
                        : isPaper
                            ? tr("On the paper of the layout. Click to work in a viewport (MSPACE).")
                            : tr("In a viewport of the layout. Click to go back to the paper (PSPACE)."));
    m_space->setAccessibleName(tr("Space: %1").arg(m_space->text()));
}

void StatusStrip::refreshCommand() {
    if (m_hintTime.isActive()) {
        return;
    }
    const InputRequest* const request = m_dialogue.request();
    const QString running = QString::fromStdWString(editor().processor().runningNames());
    const QString hint = request ? promptHint(*request) : QString();
    m_command->setText(running.isEmpty() ? hint : hint.isEmpty() ? running : running + ": " + hint);
    m_command->setToolTip(m_command->text());
}

void StatusStrip::showCoordinates(const HxGePoint3d& point) {
    m_coordinates->setText(
        QString("%1, %2").arg(QString::number(point.x, 'f', 4), QString::number(point.y, 'f', 4)));
}

void StatusStrip::showHint(const QString& text) {
    m_command->setText(text);
    m_command->setToolTip(text);
    m_hintTime.start();
}

void StatusStrip::switchSpace() {
    const Document* const document = editor().documents().active();
    if (document) {
        m_dialogue.run(document->database()->cvport() <= 1 ? "_.MSPACE\n" : "_.PSPACE\n");
    }
}

void StatusStrip::changeEvent(QEvent* event) {
    QStatusBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_layer) {
        m_layer->setProperty("swatch", QVariant());
        refreshLayer();
    }
}

}  // namespace korvex
