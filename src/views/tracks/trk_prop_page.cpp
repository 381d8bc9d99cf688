// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tracks/trk_prop_page.h"

#include "core/edit/editor.h"
#include "views/text/ui_text.h"
#include "views/tracks/track_commands.h"
#include "views/tracks/transpose_box.h"
#include "views/widgets/port_rows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

namespace tessaro {

CTrkPropPage::CTrkPropPage(CEditor& editor, TrackCommands& commands, const UiText& text, const QStringList& ports,
                           int track, QWidget* parent)
    : PropPage(text(TextId::trackProperties).arg(track), parent)
    , m_editor(editor)
    , m_commands(commands)
    , m_track(track)
    , m_name(new QLineEdit(this))
    , m_type(new QComboBox(this))
    , m_port(new QComboBox(this))
    , m_channel(new QSpinBox(this))
    , m_transpose(new TransposeBox(text(TextId::transposeOff), this))
{
    const CTrk& trk = *editor.song().trk(track);
    m_name->setText(songText(trk.GetName()));
    m_name->selectAll();
    for (const TextId type : {TextId::trackTypeUnused, TextId::trackTypeMidi, TextId::trackTypeWave})
        m_type->addItem(text(type));
    m_type->setCurrentIndex(trk.GetType());
    m_type->setEnabled(trk.IsEmpty());
    if (!trk.IsEmpty()) m_type->setToolTip(text(TextId::tipTypeFixed));
    addPortRows(*m_port, ports, trk.GetPort() + 1);
    m_port->setCurrentIndex(trk.GetPort());
    m_channel->setRange(1, 16);
    m_channel->setValue(trk.GetCh() + 1);
    m_transpose->setValue(trk.GetTransEnable() ? trk.GetTrans() : TransposeBox::off);
    addField(text, TextId::propName, *m_name);
    addField(text, TextId::propType, *m_type);
    addField(text, TextId::propPort, *m_port);
    addField(text, TextId::propChannel, *m_channel);
    addField(text, TextId::propTranspose, *m_transpose);
}

/// What is equal already stays: a name keeps its bytes.
void CTrkPropPage::take()
{
    const CTrk& trk = *m_editor.song().trk(m_track);
    m_channel->interpretText();
    m_transpose->interpretText();
    if (m_name->text() != songText(trk.GetName())) m_commands.setName(m_track, m_name->text());
    if (m_type->isEnabled() && m_type->currentIndex() != trk.GetType())
        m_commands.setType(m_track, m_type->currentIndex());
    const auto set = [this](TrackColumn what, int value, int before) {
        if (value != before) m_commands.setSetting(m_track, what, value);
    };
    set(TrackColumn::port, m_port->currentIndex(), trk.GetPort());
    set(TrackColumn::channel, m_channel->value() - 1, trk.GetCh());
    set(TrackColumn::transpose, m_transpose->value(), trk.GetTransEnable() ? trk.GetTrans() : TransposeBox::off);
}

} // namespace tessaro
