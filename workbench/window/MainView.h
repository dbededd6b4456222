// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsView>

namespace Workbench {

class MainScene;

/// Shows the pages as white paper, to be zoomed with Ctrl and the wheel.
class MainView : public QGraphicsView {
    Q_OBJECT
public:
    explicit MainView(MainScene *scene, QWidget *parent = nullptr);

    void zoom(double factor);
    void fitPageWidth();

protected:
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void showEvent(QShowEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    bool m_wasShown = false;
};

} // namespace Workbench
