#include "ui/UiTextFrame.h"

#include "ui/UiColors.h"
#include "ui/UiLayout.h"
#include "ui/UiTextField.h"

#include <QAbstractScrollArea>
#include <QEvent>

namespace glimmerly {

UiTextFrame::UiTextFrame(QAbstractScrollArea& area, QWidget* parent) : QWidget(parent), area_(area) {
    tightLayout<QVBoxLayout>(this, 0)->addWidget(&area);
    area.setFrameShape(QFrame::NoFrame);
    QPalette transparent = area.palette();
    transparent.setColor(QPalette::Base, Qt::transparent);
    area.setPalette(transparent);
    area.installEventFilter(this);
}

bool UiTextFrame::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return false;
}

void UiTextFrame::paintEvent(QPaintEvent*) {
    paintTextFieldFrame(*this, area_, uiColors(*this).editorOutline);
}

} // namespace glimmerly
