#include "screens/filter_screen.h"

#include <QLabel>
#include <QVBoxLayout>

namespace lorvane::screens {

using namespace Qt::StringLiterals;

FilterScreen::FilterScreen(const QString& titolo) : titolo_(titolo) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"..:: "_s + titolo_ + u" ::.."_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(titolo_, this));
    resize(720, 480);
}

}  // namespace lorvane::screens
