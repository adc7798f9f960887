#include "client/save_log.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace orvo {

namespace {

constexpr std::string_view secret_slots[] = {"passwd"};

bool is_secret(std::string_view slot)
{
    return std::ranges::find(secret_slots, slot) != std::end(secret_slots);
}

QJsonObject to_json(const values& all)
{
    QJsonObject made;
    for (const values::value& each : all)
        if (!is_secret(each.slot))
            made.insert(QString::fromStdString(each.slot), QString::fromStdString(each.text));
    return made;
}

values from_json(const QJsonObject& made)
{
    values all;
    for (auto each = made.begin(); each != made.end(); ++each)
        all.add({each.key().toStdString(), each.value().toString()});
    return all;
}

QByteArray line_of(const QJsonObject& entry)
{
    return QJsonDocument{entry}.toJson(QJsonDocument::Compact) + '\n';
}

QString word_of(save_end how)
{
    switch (how) {
    case save_end::finished:
        return QStringLiteral("finished");
    case save_end::nothing_stored:
        return QStringLiteral("nothing stored");
    case save_end::given_up:
        break;
    }
    return QStringLiteral("given up");
}

save_note note_of(const QJsonObject& entry)
{
    const auto text = [&entry](const char* key) { return entry.value(QLatin1String{key}).toString(); };
    save_note note;
    note.id = text("note");
    note.act = text("act");
    note.act_words = text("words");
    note.operator_id = text("operator");
    note.operator_name = text("name");
    note.pers_no = text("pers_no");
    note.begun_at = QDateTime::fromString(text("at"), Qt::ISODate);
    note.given = from_json(entry.value(QLatin1String("given")).toObject());
    note.before = from_json(entry.value(QLatin1String("before")).toObject());
    return note;
}

} // namespace

std::vector<save_note> read_save_notes(const QString& path)
{
    std::vector<save_note> notes;
    QFile file{path};
    if (!file.open(QIODevice::ReadOnly))
        return notes;
    while (!file.atEnd()) {
        const QJsonObject entry = QJsonDocument::fromJson(file.readLine()).object();
        const QString id = entry.value(QLatin1String("note")).toString();
        if (id.isEmpty())
            continue;
        const auto known = std::ranges::find(notes, id, &save_note::id);
        if (entry.contains(QLatin1String("act"))) {
            if (known == notes.end())
                notes.push_back(note_of(entry));
        } else if (known != notes.end()) {
            if (entry.contains(QLatin1String("stored"))) {
                known->stored.append(entry.value(QLatin1String("stored")).toString());
                known->stored_words.append(entry.value(QLatin1String("words")).toString());
            }
            known->is_over = known->is_over || entry.contains(QLatin1String("over"));
        }
    }
    return notes;
}

save_log::~save_log()
{
    if (file_ >= 0)
        ::close(file_);
}

bool save_log::append(const QByteArray& line, bool to_the_disk)
{
    if (file_ < 0)
        file_ = ::open(QFile::encodeName(path_).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    const bool is_written =
        file_ >= 0 &&
        ::write(file_, line.constData(), static_cast<std::size_t>(line.size())) == line.size() &&
        (!to_the_disk || ::fdatasync(file_) == 0);
    if (!is_written && !std::exchange(has_failed_, true) && on_failure)
        on_failure(QString::fromLocal8Bit(std::strerror(errno)));
    return is_written;
}

QString save_log::begin(const planned_save& what)
{
    const save_author by = author_();
    const QString id = QUuid::createUuid().toString(QUuid::Id128);
    append(line_of({{QStringLiteral("note"), id},
                    {QStringLiteral("at"), by.now.toString(Qt::ISODate)},
                    {QStringLiteral("act"), QString::fromLatin1(what.act->name)},
                    {QStringLiteral("words"), QString::fromUtf8(what.act->words)},
                    {QStringLiteral("operator"), by.id},
                    {QStringLiteral("name"), by.name},
                    {QStringLiteral("pers_no"), what.pers_no},
                    {QStringLiteral("given"), to_json(what.given)},
                    {QStringLiteral("before"), to_json(what.before)}}),
           true);
    for (const values::value& each : what.given)
        if (is_secret(each.slot))
            secrets_[id].add(each);
    return id;
}

/// Not to the disk at once: where the machine falls, the tables tell how far the save came.
void save_log::mark(const QString& note, const save_step& step)
{
    append(line_of({{QStringLiteral("note"), note},
                    {QStringLiteral("stored"), QString::fromLatin1(step.id)},
                    {QStringLiteral("words"), QString::fromUtf8(step.words)}}),
           false);
}

void save_log::end(const QString& note, save_end how)
{
    append(line_of({{QStringLiteral("note"), note},
                    {QStringLiteral("over"), word_of(how)},
                    {QStringLiteral("at"), author_().now.toString(Qt::ISODate)}}),
           false);
    secrets_.erase(note);
}

std::vector<save_note> save_log::unfinished() const
{
    std::vector<save_note> notes = read_save_notes(path_);
    std::erase_if(notes, [](const save_note& each) { return each.is_over; });
    return notes;
}

void save_log::tidy(QDate today)
{
    QFile file{path_};
    if (file_ >= 0 || !file.open(QIODevice::ReadOnly))
        return;
    QStringList dropped;
    for (const save_note& each : read_save_notes(path_))
        if (each.is_over && each.begun_at.date() < today)
            dropped.append(each.id);
    if (dropped.isEmpty())
        return;
    QByteArray kept;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        const QString id = QJsonDocument::fromJson(line).object().value(QLatin1String("note")).toString();
        if (!id.isEmpty() && !dropped.contains(id))
            kept += line;
    }
    // Beside it first: a fall in between leaves the notes as they were.
    const QByteArray beside = QFile::encodeName(path_ + QStringLiteral(".new"));
    ::unlink(beside.constData());
    const int made = ::open(beside.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (made < 0)
        return;
    const bool is_whole =
        ::write(made, kept.constData(), static_cast<std::size_t>(kept.size())) == kept.size() &&
        ::fsync(made) == 0;
    ::close(made);
    if (!is_whole || std::rename(beside.constData(), QFile::encodeName(path_).constData()) != 0)
        ::unlink(beside.constData());
}

std::optional<planned_save> save_log::plan_of(const save_note& note,
                                              std::span<const save_act* const> acts) const
{
    const auto act = std::ranges::find_if(
        acts, [&note](const save_act* each) { return note.act == QLatin1String{each->name}; });
    if (act == acts.end())
        return {};
    planned_save plan{*act, note.pers_no, note.given, note.before};
    if (const auto secret = secrets_.find(note.id); secret != secrets_.end())
        plan.given.add(secret->second);
    return plan;
}

} // namespace orvo
