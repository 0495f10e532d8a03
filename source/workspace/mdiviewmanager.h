#pragma once
#include "viewmanager.h"
#include <optional>
class MDIWorkspace;
class QSettings;

/// Each view has a frame of its own.
class MDIViewManager : public ViewManager
{
    Q_OBJECT
public:
    /// @p settings keep in "Editor/MDIMaximised" whether frames fill the area; they outlive the manager.
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

private:
    void readMaximised();
    void titleBarClicked();

    QSettings *const m_settings;
    MDIWorkspace *m_workspace;
    bool m_maximised;
    int m_cascade = 0;                   ///< the step at which the next frame stands
    std::optional<QRect> m_replacedRect; ///< of the frame closed last
};

/// Where the frame of step @p i of a cascade stands in @p workspace. Its bottom stays at the bottom of the workspace
/// and only its top moves. @p i goes on to the next step; it wraps at the number of steps that there is room for.
[[nodiscard]] QRect cascadeRect(const QRect &workspace, int &i);
