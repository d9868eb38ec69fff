// The panel's visual vocabulary: brand colours, foreground levels per colour
// scheme, the pill colour rules, the flat backdrop that stands in for the
// window materials, the panel's width classes and the measures the reorder
// shares with the screens. Pure functions first, then the one QObject that
// hands them to QML.
#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QString>
#include <QVariantMap>
#include <optional>
#include <string_view>

namespace velmar::ui {

enum class Scheme { light, dark };

// ---- Brand ----

/// The accent: sRGB 9,105,218 in light scheme, 68,147,248 in dark.
QColor accent(Scheme scheme);
/// The accent behind white text (filled pills, the default button): in dark
/// scheme a deeper shade, since white on the bright accent reads at 3:1.
QColor accentFill(Scheme scheme);
/// Link text on the backdrop: in light scheme a deeper shade of the accent,
/// which on the grey backdrop stays under 4.5:1.
QColor linkText(Scheme scheme);
/// Dark amber for warning marks on light backgrounds, where orange is too weak.
QColor warningEmphasis();
QColor destructive(Scheme scheme);
QColor warning(Scheme scheme);
QColor info(Scheme scheme);
QColor success(Scheme scheme);

// ---- Foreground levels and fills ----

enum class Level { primary, secondary, tertiary, quaternary, quinary };

/// The label colour at `level`: black in light scheme, white in dark, with
/// falling opacity; stronger under increased contrast.
QColor foreground(Level level, Scheme scheme, bool increasedContrast = false);
/// The fill colour at `level`, used behind hovered controls.
QColor fill(Level level, Scheme scheme);

// ---- Pill ----

enum class PillRole { accent, destructive, warning, info };
std::optional<PillRole> pillRole(std::string_view name);

struct PillColors {
    QColor foreground;
    QColor background;
    std::optional<QColor> border;  // width 1, inside the edge
    bool operator==(const PillColors&) const = default;
};

/// The first rule that holds, for foreground and background alike:
/// increased contrast, then the unfilled warning in light scheme, then filled,
/// then the plain role colour.
PillColors pillColors(PillRole role, bool filled, Scheme scheme, bool increasedContrast);

// ---- Backdrop ----

enum class Material { hud, popover, sidebar, menu, under, window, header, sheet, content };

/// The material forced by VELMAR_MATERIAL, exact lower-case names only.
std::optional<Material> parseMaterial(const char* value);

struct Backdrop {
    QColor base;
    std::optional<QColor> overlay;  // laid over `base`
    bool operator==(const Backdrop&) const = default;
};

/// The forced material, else sidebar in dark scheme and menu in light; in
/// light scheme without a forced material the window colour lies over it at
/// opacity 0.4.
Backdrop backdrop(Scheme scheme, const std::optional<Material>& forced);

// ---- Width classes ----

enum class PanelWidth { minimal, compact, regular };
inline constexpr double compactMinimum = 300;
inline constexpr double regularMinimum = 420;
PanelWidth widthClass(double width);
std::string_view name(PanelWidth width);

// ---- Measures, in points ----

namespace metrics {
/// A pull request's row in the list, and a group's heading.
inline constexpr int rowHeight = 24;
inline constexpr int headingHeight = 24;
/// The space above a heading that holds the divider between groups.
inline constexpr int headingDivider = 11;
/// A watched repository's trailing strip, its info button: a press there is
/// the button's and never starts a drag.
inline constexpr int trailingStrip = 34;
}  // namespace metrics

// ---- The QML face ----

/// The colours of the current scheme as properties; they all change together
/// when the scheme or the contrast setting changes.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell hands the panel its theme.")
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(bool increasedContrast READ increasedContrast NOTIFY changed)
    Q_PROPERTY(QColor accent READ accentColor NOTIFY changed)
    /// The accent, or the platform highlight under increased contrast.
    Q_PROPERTY(QColor tint READ tint NOTIFY changed)
    /// Behind white text: the default button's face.
    Q_PROPERTY(QColor tintFill READ tintFill NOTIFY changed)
    /// Text that opens a link: pull request numbers, "more on GitHub", link buttons.
    Q_PROPERTY(QColor link READ link NOTIFY changed)
    Q_PROPERTY(QColor primary READ primary NOTIFY changed)
    Q_PROPERTY(QColor secondary READ secondary NOTIFY changed)
    Q_PROPERTY(QColor tertiary READ tertiary NOTIFY changed)
    Q_PROPERTY(QColor quaternary READ quaternary NOTIFY changed)
    Q_PROPERTY(QColor quinary READ quinary NOTIFY changed)
    Q_PROPERTY(QColor quaternaryFill READ quaternaryFill NOTIFY changed)
    Q_PROPERTY(QColor tertiaryFill READ tertiaryFill NOTIFY changed)
    Q_PROPERTY(QColor backdrop READ backdropBase NOTIFY changed)
    /// Transparent when there is no overlay.
    Q_PROPERTY(QColor backdropOverlay READ backdropOverlay NOTIFY changed)
    Q_PROPERTY(QColor destructive READ destructiveColor NOTIFY changed)
    Q_PROPERTY(QColor warning READ warningColor NOTIFY changed)
    Q_PROPERTY(QColor warningEmphasis READ warningEmphasisColor CONSTANT)
    Q_PROPERTY(QColor info READ infoColor NOTIFY changed)
    Q_PROPERTY(QColor success READ successColor NOTIFY changed)
    // Text styles, in pixels at scale 1: the desktop has no named styles, so
    // these keep the usual proportions between them.
    Q_PROPERTY(int body MEMBER body_ CONSTANT)
    Q_PROPERTY(int callout MEMBER callout_ CONSTANT)
    Q_PROPERTY(int caption MEMBER caption_ CONSTANT)
    Q_PROPERTY(int caption2 MEMBER caption2_ CONSTANT)
    Q_PROPERTY(int headline MEMBER headline_ CONSTANT)
    Q_PROPERTY(int title3 MEMBER title3_ CONSTANT)
    Q_PROPERTY(int title2 MEMBER title2_ CONSTANT)
    Q_PROPERTY(int title MEMBER title_ CONSTANT)
    /// The fixed-pitch face for commands and code.
    Q_PROPERTY(QString monospace MEMBER monospace_ CONSTANT)
    /// The application's text face, for text that falls back from monospace.
    Q_PROPERTY(QString textFamily READ textFamily CONSTANT)
    /// The window's own background, behind lifted rows and popups.
    Q_PROPERTY(QColor windowBackground READ windowBackground NOTIFY changed)
    // The measures of `metrics`, for the screens.
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
    Q_PROPERTY(int headingHeight READ headingHeight CONSTANT)
    Q_PROPERTY(int headingDivider READ headingDivider CONSTANT)
    Q_PROPERTY(int trailingStrip READ trailingStrip CONSTANT)
public:
    static QString textFamily();
    Theme(std::optional<Material> forcedMaterial, QObject* parent = nullptr);

    void setDark(bool dark);
    void setIncreasedContrast(bool on);

    bool dark() const { return scheme_ == Scheme::dark; }
    bool increasedContrast() const { return contrast_; }
    QColor accentColor() const { return accent(scheme_); }
    QColor tint() const;
    QColor tintFill() const;
    QColor link() const;
    QColor primary() const { return foreground(Level::primary, scheme_, contrast_); }
    QColor secondary() const { return foreground(Level::secondary, scheme_, contrast_); }
    QColor tertiary() const { return foreground(Level::tertiary, scheme_, contrast_); }
    QColor quaternary() const { return foreground(Level::quaternary, scheme_, contrast_); }
    QColor quinary() const { return foreground(Level::quinary, scheme_, contrast_); }
    QColor quaternaryFill() const { return fill(Level::quaternary, scheme_); }
    QColor tertiaryFill() const { return fill(Level::tertiary, scheme_); }
    QColor backdropBase() const { return backdrop(scheme_, material_).base; }
    QColor backdropOverlay() const;
    QColor destructiveColor() const { return destructive(scheme_); }
    QColor warningColor() const { return warning(scheme_); }
    QColor warningEmphasisColor() const { return warningEmphasis(); }
    QColor infoColor() const { return info(scheme_); }
    QColor successColor() const { return success(scheme_); }
    QColor windowBackground() const;
    static int rowHeight() { return metrics::rowHeight; }
    static int headingHeight() { return metrics::headingHeight; }
    static int headingDivider() { return metrics::headingDivider; }
    static int trailingStrip() { return metrics::trailingStrip; }

    /// {foreground, background, border (transparent if none)} of a pill; a
    /// function of its arguments only, so a QML binding that passes the
    /// scheme re-evaluates when it changes. Unknown roles count as accent.
    Q_INVOKABLE QVariantMap pill(const QString& role, bool filled, bool dark,
                                 bool increasedContrast) const;

    /// "minimal", "compact" or "regular" for a panel `width` points wide.
    Q_INVOKABLE QString widthClass(double width) const;

    /// `text` as styled text in the fixed-pitch face: a command inside a sentence.
    Q_INVOKABLE QString mono(const QString& text) const {
        return QStringLiteral("<font face=\"") + monospace_ + QStringLiteral("\">") + text + QStringLiteral("</font>");
    }

signals:
    void changed();

private:
    Scheme scheme_ = Scheme::dark;
    bool contrast_ = false;
    std::optional<Material> material_;
    int body_ = 13;
    int callout_ = 12;
    int caption_ = 11;
    int caption2_ = 10;
    int headline_ = 13;
    int title3_ = 15;
    int title2_ = 17;
    int title_ = 22;
    QString monospace_ = QStringLiteral("DejaVu Sans Mono");
};

}  // namespace velmar::ui
