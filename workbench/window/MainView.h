// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsView>

namespace Workbench {

class MainScene;

/// Shows the document as a workspace that fills the window, or as pages of white paper. Ctrl and the wheel zoom.
class MainView : public QGraphicsView {
    Q_OBJECT
public:
    explicit MainView(MainScene *scene, QWidget *parent = nullptr);

    void zoom(double factor);
    /// The workspace as wide as the window, or the page.
    void fitWidth();
    bool isPagePreview() const;
    void setPagePreview(bool preview);

    /// Stands in the middle while there is nothing on the page. Owned by the view.
    void setHints(QWidget *hints);

protected:
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void fillWindow();
    void placeHints();

    MainScene *m_scene;
    QWidget *m_hints = nullptr;
    bool m_wasShown = false;
};

} // namespace Workbench
