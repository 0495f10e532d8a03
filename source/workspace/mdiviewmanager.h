#pragma once
#include "viewmanager.h"
#include <optional>
class MDIWorkspace;
class QSettings;

/// Shows each view in a frame of its own.
class MDIViewManager : public ViewManager
{
    Q_OBJECT
public:
    /// The key "Editor/MDIMaximised" of @p settings stores whether frames fill the area; the settings outlive the
    /// manager.
    explicit MDIViewManager(QSettings *settings, QWidget *parent = nullptr);
    ~MDIViewManager() override;

    [[nodiscard]] bool canCascade() override { return true; }
    [[nodiscard]] bool canTile() override { return true; }
    void cascade() override;
    void tile() override;
    void addView(View *newView, bool activate) override;
    void addViewInPlace(View *newView, bool activate) override;
    [[nodiscard]] View *currentView() override;
    void activateView(View *view, bool setFocus) override;
    void viewClosed(View *view) override;

private Q_SLOTS:
    void titleBarClicked();

private:
    void readMaximised();

    QSettings *const m_settings;
    MDIWorkspace *m_workspace;
    bool m_maximised;
    int m_cascade = 0;                   ///< the cascade step of the next frame
    std::optional<QRect> m_replacedRect; ///< of the frame closed last
};

/// The place in @p workspace of the frame with cascade step @p i. Its bottom stays at the bottom of the workspace and
/// only its top moves. @p i becomes the next step, or 0 after the last step for which there is room.
[[nodiscard]] QRect cascadeRect(const QRect &workspace, int &i);
