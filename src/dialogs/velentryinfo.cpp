// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryinfo.h"

#include "dialogs/veldialogsize.h"
#include "dialogs/velentryrows.h"
#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QAbstractListModel>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>

#include <algorithm>

namespace
{
constexpr int LeastWidth = 400; // pixels
/** More lines than this are scrolled. */
constexpr int MostLines = 8;
constexpr int MostPeople = 6;
/** Characters that are more than such lines, without measuring them. */
constexpr int LongText = 2000;
/** Characters, of which a paragraph is laid out at once. */
constexpr int MostText = 20000;

QString sizeName()
{
    return QStringLiteral("EntryInfo");
}

QString captionOf(int type)
{
    switch (type) {
    case VelEntry::Event:
        return i18nc("@title:window", "Event");
    case VelEntry::Todo:
        return i18nc("@title:window", "To-Do task");
    default:
        return {};
    }
}

/** Also of somebody whom only the entry knows. */
QString nameOf(const VelApp &app, const VelEntry &entry, quint32 userid)
{
    const QString name = app.getAccountName(userid);
    const VelAccount *guest = userid != 0 ? entry.accounts.get(userid) : nullptr;
    return name.isEmpty() && guest ? guest->name : name;
}

/** True when the window shows the calendar of somebody else, whom the invitations in it are for. */
bool isOfAnother(const VelApp &app)
{
    const quint32 own = app.settings()->origUserid;
    return own != 0 && app.document()->getUserId() != own;
}

/** People and their answers. A row is made when it comes to be seen: there may be many thousands. */
class People : public QAbstractListModel
{
public:
    People(const VelAccountList &people, int iconSize, QObject *parent)
        : QAbstractListModel(parent)
        , m_people(people)
    {
        // Names stand in line whether there is an answer before them or not.
        QPixmap none(iconSize, iconSize);
        none.fill(Qt::transparent);
        m_noAnswer = QIcon(none);
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_people.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid))
            return {};
        const VelAccount &account = m_people.at(index.row());
        const QString name = WShownText::cut(account.name.isEmpty() ? account.email : account.name);
        switch (role) {
        case Qt::DisplayRole:
            return name;
        case Qt::DecorationRole:
            return account.getStatusPix().isEmpty() ? m_noAnswer : VelApp::getIcon(account.getStatusPix());
        case Qt::ToolTipRole:
            return account.getStatusStr();
        case Qt::AccessibleTextRole:
            return i18nc("a person and the answer to an invitation", "%1: %2", name, account.getStatusStr());
        default:
            return {};
        }
    }

private:
    VelAccountList m_people;
    QIcon m_noAnswer;
};

QLabel *plainLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}
} // namespace

VelEntryInfo::VelEntryInfo(const VelEntry &entry, QWidget *parent, VelAnswer::Mode wanted,
                           const QString &text, bool mayAnswer)
    : QDialog(parent)
{
    const VelApp &app = *VelApp::getApp(parent);
    const VelDoc &doc = *app.document();
    const VelAnswer::Mode mode = VelAnswer::modeFor(doc, entry, wanted);
    const VelAnswer::Offer offer = VelAnswer::offerFor(doc, entry, mode, mayAnswer);
    const bool hasHeader = mode == VelAnswer::Invitation || mode == VelAnswer::Notice;
    setWindowTitle(captionOf(entry.type));
    setMinimumWidth(LeastWidth);

    auto *layout = new QVBoxLayout(this);
    if (hasHeader && !text.isEmpty() && doc.getOrigRight() == VelDoc::FullRight)
        layout->addWidget(plainLabel(WShownText::cut(text), this));
    if (offer.isOffered && isOfAnother(app))
        layout->addWidget(plainLabel(
            i18n("You answer for %1.", WShownText::cut(nameOf(app, entry, doc.getUserId()))), this));
    if (offer.isOffered)
        addAnswers(layout, offer);
    QScrollArea *rows = makeRows(velEntryRows(doc, entry, mode, nameOf(app, entry, entry.user)));
    layout->addWidget(rows, 1);
    m_box = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    QPushButton *ok = m_box->button(QDialogButtonBox::Ok);
    ok->setDefault(true);
    ok->setEnabled(offer.mayLeaveOpen);
    if (offer.mayLeaveOpen)
        ok->setFocus();
    else
        ok->setToolTip(i18n("Please answer the invitation"));
    connect(m_box, &QDialogButtonBox::accepted, this, &VelEntryInfo::slotOk);
    layout->addWidget(m_box);
    VelDialogSize::restore(*this, sizeName(), usualSize(*rows));
}

VelEntryInfo::~VelEntryInfo()
{
    VelDialogSize::save(*this, sizeName());
}

void VelEntryInfo::offerLater(int others)
{
    if (others == 0)
        return;
    QPushButton *later = m_box->addButton(i18n("&Later for All"), QDialogButtonBox::ActionRole);
    later->setAutoDefault(false);
    const QString text = i18np("Leaves this and one more without an answer for now",
                               "Leaves this and %1 more without an answer for now", others);
    later->setToolTip(text);
    later->setWhatsThis(text);
    connect(later, &QPushButton::clicked, this, [this] {
        m_answer = VelAnswer::AllLater;
        reject();
    });
}

void VelEntryInfo::addAnswers(QBoxLayout *layout, const VelAnswer::Offer &offer)
{
    auto *row = new QHBoxLayout;
    const auto add = [this, row](const char *icon, const QString &text, bool isEnabled, auto slot,
                                 const QString &whatsThis) {
        auto *button = new QPushButton(VelApp::getIcon(QLatin1String(icon)), text, this);
        // Return stays with the button that changes nothing.
        button->setAutoDefault(false);
        button->setEnabled(isEnabled);
        button->setWhatsThis(whatsThis);
        connect(button, &QPushButton::clicked, this, slot);
        row->addWidget(button);
    };
    add("yes", i18n("&Accept"), offer.mayAccept, &VelEntryInfo::slotAccept,
        i18n("Tells the organizer that you will take part."));
    add("tentative", i18n("Accept &tentatively"), offer.mayAcceptTentatively, &VelEntryInfo::slotTentative,
        i18n("Tells the organizer that you will perhaps take part."));
    add("no", i18n("&Decline"), offer.mayDecline, &VelEntryInfo::slotDecline,
        i18n("Tells the organizer that you will not take part, and removes the entry from your calendar."));
    row->addStretch();
    layout->addLayout(row);
}

QScrollArea *VelEntryInfo::makeRows(const std::vector<VelEntryRow> &rows)
{
    auto *area = new QScrollArea(this);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    auto *content = new QWidget(area);
    auto *form = new QFormLayout(content);
    const int margin = fontMetrics().averageCharWidth() / 2;
    form->setContentsMargins(margin, 0, margin, 0);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const VelEntryRow &row : rows) {
        auto *heading = new QLabel(row.heading, content);
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
        heading->setAlignment(Qt::AlignLeading | Qt::AlignTop);
        QWidget *value = row.people.isEmpty() ? makeText(row.text, content) : makePeople(row.people, content);
        value->setObjectName(row.heading);
        // A label is called by what stands on it.
        if (!qobject_cast<QLabel *>(value))
            value->setAccessibleName(row.heading);
        form->addRow(heading, value);
    }
    area->setWidget(content);
    return area;
}

/** A long text is scrolled by itself, so that what stands below it is not out of reach. */
QWidget *VelEntryInfo::makeText(const QString &text, QWidget *parent) const
{
    const QFontMetrics metrics = fontMetrics();
    const int most = MostLines * metrics.lineSpacing();
    const QRect usual(0, 0, LeastWidth * 2 / 3, 0);
    if (text.size() < LongText && metrics.boundingRect(usual, Qt::TextWordWrap, text).height() <= most)
        return plainLabel(text, parent);
    auto *edit = new QPlainTextEdit(WShownText::cut(text, MostText), parent);
    edit->setReadOnly(true);
    edit->setTabChangesFocus(true);
    edit->setMinimumHeight(most);
    return edit;
}

QWidget *VelEntryInfo::makePeople(const VelAccountList &people, QWidget *parent) const
{
    auto *list = new QListView(parent);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, list);
    list->setIconSize({size, size});
    list->setUniformItemSizes(true);
    list->setModel(new People(people, size, list));
    list->setSelectionMode(QAbstractItemView::NoSelection);
    const int shown = std::min(int(people.size()), MostPeople);
    list->setFixedHeight(shown * list->sizeHintForRow(0) + 2 * list->frameWidth());
    return list;
}

/** As wide as can be read well, and so high that nothing is scrolled but long texts. */
QSize VelEntryInfo::usualSize(const QScrollArea &rows) const
{
    constexpr int characters = 55;
    const int margins = layout()->contentsMargins().left() + layout()->contentsMargins().right();
    const int width =
        std::max({LeastWidth, fontMetrics().averageCharWidth() * characters, sizeHint().width()});
    const int others = sizeHint().height() - rows.sizeHint().height();
    return {width, others + rows.widget()->layout()->totalHeightForWidth(width - margins)};
}

void VelEntryInfo::answer(int status)
{
    m_answer = status;
    accept();
}

void VelEntryInfo::slotAccept()
{
    answer(VelAccount::Accepted);
}

void VelEntryInfo::slotTentative()
{
    answer(VelAccount::Tentative);
}

void VelEntryInfo::slotDecline()
{
    answer(VelAccount::Declined);
}

void VelEntryInfo::slotOk()
{
    accept();
}
