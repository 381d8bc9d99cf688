// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/edits/edit_kind.h"

#include "core/tools/chord_sort.h"
#include "core/tools/double_notes.h"
#include "core/tools/gate_time.h"
#include "core/tools/humanise.h"
#include "core/tools/quantise.h"
#include "core/tools/shift.h"
#include "core/tools/split.h"
#include "core/tools/thin_out.h"
#include "core/tools/transpose.h"
#include "core/tools/velocity.h"
#include "views/editors/view_parts.h"
#include "views/edits/everyday_edits.h"
#include "views/roll/grid.h"

namespace tessaro {
namespace {

using Kind = EditField::Kind;

template <class Number>
constexpr int number(Number value)
{
    return static_cast<int>(value);
}

template <class... Modes>
constexpr unsigned in(Modes... modes)
{
    return ((1U << number(modes)) | ...);
}

GridLength lengthOf(int row, int exponent)
{
    return [index = row * Grid::lengths + exponent](const _EDT_MEASINFO& meas) {
        return Grid::length(index, meas.beatClock, meas.den);
    };
}

// The values of these are rows of the grid.
constexpr EditChoice shapes[] = {{0, TextId::editStraight},
                                 {1, TextId::editDotted},
                                 {2, TextId::editTriplet},
                                 {4, TextId::editQuintuplet},
                                 {6, TextId::editSeptuplet}};

// Quantise

using What = QuantiseSettings::What;
using Side = QuantiseSettings::Side;

constexpr EditChoice quantised[] = {{number(What::starts), TextId::editStarts},
                                    {number(What::ends), TextId::editEnds},
                                    {number(What::both), TextId::editStartsAndEnds}};
constexpr EditChoice sides[] = {{number(Side::near), TextId::editNearGrid},
                                {number(Side::far), TextId::editFarFromGrid}};
constexpr EditField quantiseFields[] = {
    {TextId::editNoteLength, "Quantise Note", Kind::noteLength, 4, 0, 6},
    {TextId::editNoteShape, "Quantise Shape", Kind::choice, 0, 0, 0, shapes},
    {TextId::editWhat, "Quantise What", Kind::choice, number(What::starts), 0, 0, quantised},
    {TextId::editStrength, "Quantise Strength", Kind::percent, 100, 0, 100},
    {TextId::editSwing, "Quantise Swing", Kind::percent, 0, 0, 100},
    {TextId::editReach, "Quantise Reach", Kind::percent, 100, 0, 100},
    {TextId::editReachSide, "Quantise Side", Kind::choice, number(Side::near), 0, 0, sides},
};

EditPlan planQuantise(const EditInput& in)
{
    return quantise(in.parts.editor, in.selection,
                    {.grid = lengthOf(in.values[1], in.values[0]),
                     .what = static_cast<What>(in.values[2]),
                     .strength = in.values[3],
                     .swing = in.values[4],
                     .reach = in.values[5],
                     .side = static_cast<Side>(in.values[6])});
}

// Humanise

constexpr EditField humaniseFields[] = {
    {TextId::editTimeRange, "Humanise Time", Kind::ticks, 10, 0, 480},
    {TextId::editVelocityRange, "Humanise Velocity", Kind::number, 8, 0, 127},
    {TextId::editGateRange, "Humanise Gate", Kind::ticks, 0, 0, 480},
};

EditPlan planHumanise(const EditInput& in)
{
    return humanise(in.selection,
                    {.time = in.values[0], .velocity = in.values[1], .gate = in.values[2], .seed = in.seed});
}

// Transpose

using By = TransposeSettings::By;

constexpr EditChoice ways[] = {{number(By::semitones), TextId::editBySemitones},
                               {number(By::major), TextId::editByMajor},
                               {number(By::minor), TextId::editByMinor}};
constexpr EditField transposeFields[] = {
    {TextId::editMode, "Transpose By", Kind::choice, number(By::semitones), 0, 0, ways},
    {TextId::editSemitones, "Transpose Semitones", Kind::number, 12, -127, 127, {}, in(By::semitones)},
    {TextId::editScaleKey, "Transpose Tonic", Kind::tonic, 0, 0, 11, {}, in(By::major, By::minor)},
    {TextId::editScaleSteps, "Transpose Steps", Kind::number, 2, -74, 74, {}, in(By::major, By::minor)},
};

EditPlan planTranspose(const EditInput& in)
{
    const auto by = static_cast<By>(in.values[0]);
    const int steps = by == By::semitones ? in.values[1] : in.values[3];
    return transpose(in.selection, {.by = by, .steps = steps, .tonic = in.values[2]});
}

// Velocity

using VelocityMode = VelocitySettings::Mode;

constexpr EditChoice velocityModes[] = {{number(VelocityMode::add), TextId::editAdd},
                                        {number(VelocityMode::scale), TextId::editScale},
                                        {number(VelocityMode::set), TextId::editSet},
                                        {number(VelocityMode::compress), TextId::editCompress},
                                        {number(VelocityMode::ramp), TextId::editRamp}};
constexpr EditField velocityFields[] = {
    {TextId::editMode, "Velocity Mode", Kind::choice, number(VelocityMode::add), 0, 0, velocityModes},
    {TextId::editAmount, "Velocity Add", Kind::number, 10, -126, 126, {}, in(VelocityMode::add)},
    {TextId::editPercent, "Velocity Scale", Kind::percent, 110, 0, 400, {}, in(VelocityMode::scale)},
    {TextId::editAmount, "Velocity Set", Kind::number, 100, 1, 127, {}, in(VelocityMode::set)},
    {TextId::editCentre, "Velocity Centre", Kind::number, 80, 1, 127, {}, in(VelocityMode::compress)},
    {TextId::editPercent, "Velocity Compress", Kind::percent, 50, 0, 200, {}, in(VelocityMode::compress)},
    {TextId::editFrom, "Velocity From", Kind::number, 40, 1, 127, {}, in(VelocityMode::ramp)},
    {TextId::editTo, "Velocity To", Kind::number, 100, 1, 127, {}, in(VelocityMode::ramp)},
};

EditPlan planVelocity(const EditInput& in)
{
    const auto mode = static_cast<VelocityMode>(in.values[0]);
    return changeVelocity(in.selection, {.mode = mode,
                                         .amount = mode == VelocityMode::add ? in.values[1] : in.values[3],
                                         .percent = mode == VelocityMode::scale ? in.values[2] : in.values[5],
                                         .centre = in.values[4],
                                         .from = in.values[6],
                                         .to = in.values[7]});
}

// Gate time

using GateMode = GateSettings::Mode;

constexpr EditChoice gateModes[] = {{number(GateMode::add), TextId::editAdd},
                                    {number(GateMode::scale), TextId::editScale}};
constexpr EditField gateFields[] = {
    {TextId::editMode, "Gate Mode", Kind::choice, number(GateMode::scale), 0, 0, gateModes},
    {TextId::editAmount, "Gate Add", Kind::ticks, 10, -9600, 9600, {}, in(GateMode::add)},
    {TextId::editPercent, "Gate Scale", Kind::percent, 80, 1, 400, {}, in(GateMode::scale)},
};
constexpr EditField lengthFields[] = {
    {TextId::editNoteLength, "Length Note", Kind::noteLength, 3, 0, 6},
    {TextId::editNoteShape, "Length Shape", Kind::choice, 0, 0, 0, shapes},
    {TextId::editPercent, "Length Percent", Kind::percent, 100, 1, 200},
};
constexpr EditField legatoFields[] = {{TextId::editGap, "Legato Gap", Kind::ticks, 0, -480, 480}};

EditPlan planGate(const EditInput& in)
{
    return changeGate(
        in.parts.editor, in.selection,
        {.mode = static_cast<GateMode>(in.values[0]), .ticks = in.values[1], .percent = in.values[2], .length = {}});
}

EditPlan planLength(const EditInput& in)
{
    return changeGate(in.parts.editor, in.selection,
                      {.mode = GateMode::set, .percent = in.values[2], .length = lengthOf(in.values[1], in.values[0])});
}

EditPlan planLegato(const EditInput& in)
{
    return changeGate(in.parts.editor, in.selection, {.mode = GateMode::legato, .length = {}, .gap = in.values[0]});
}

// Time and number

constexpr EditField shiftFields[] = {
    {TextId::editBars, "Shift Bars", Kind::number, 0, -999, 999},
    {TextId::editBeats, "Shift Beats", Kind::number, 0, -999, 999},
    {TextId::editTicks, "Shift Ticks", Kind::number, 0, -9600, 9600},
};

EditPlan planShift(const EditInput& in)
{
    return shift(in.parts.editor, in.selection, {.bars = in.values[0], .beats = in.values[1], .ticks = in.values[2]});
}

constexpr EditField thinFields[] = {
    {TextId::editTimeDistance, "Thin Time", Kind::ticks, 20, 0, 1920},
    {TextId::editValueDistance, "Thin Value", Kind::number, 0, 0, 127},
};

EditPlan planThin(const EditInput& in) { return thinOut(in.selection, {.ticks = in.values[0], .value = in.values[1]}); }

// Tracks and chords

constexpr EditField splitFields[] = {
    {TextId::editSplitKey, "Split Key", Kind::key, 60, 0, 127},
    {TextId::editTargetTrack, "Split Track", Kind::track, 2},
};

EditPlan planSplit(const EditInput& in)
{
    return splitByPitch(in.selection, {.key = in.values[0], .track = in.values[1]});
}

EditPlan planChannels(const EditInput& in) { return splitByChannel(in.parts.editor, in.selection); }
EditPlan planSort(const EditInput& in) { return sortChords(in.selection); }
EditPlan planSeparate(const EditInput& in) { return separateChords(in.parts.editor, in.selection); }
EditPlan planDoubles(const EditInput& in) { return removeDoubles(in.selection); }

// In the order of the edits.
constexpr EditKind kinds[] = {
    {TextId::undoQuantize, quantiseFields, planQuantise},
    {TextId::undoQuantize, quantiseFields, planQuantise},
    {TextId::undoEventChange, humaniseFields, planHumanise},
    {TextId::undoTranspose, transposeFields, planTranspose},
    {TextId::undoVelocity, velocityFields, planVelocity},
    {TextId::undoGateTime, gateFields, planGate},
    {TextId::undoGateTime, lengthFields, planLength},
    {TextId::undoGateTime, legatoFields, planLegato},
    {TextId::undoMove, shiftFields, planShift},
    {TextId::undoThinOut, thinFields, planThin},
    {TextId::undoEventMove, splitFields, planSplit},
    {TextId::undoEventMove, {}, planChannels},
    {TextId::undoChordSort, {}, planSort},
    {TextId::undoChordSeparate, {}, planSeparate},
    {TextId::undoEventDelete, {}, planDoubles},
};
static_assert(std::size(kinds) == everydayEdits);

} // namespace

const EditKind& editKind(EverydayEdit edit) { return kinds[static_cast<std::size_t>(edit)]; }

} // namespace tessaro
