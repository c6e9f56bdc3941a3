#pragma once

#include <glibmm/ustring.h>

#include <string>

// Plain words as Pango markup: shows exactly as typed. Bytes that are not UTF-8
// show as replacement characters: the toolkit draws nothing of a text that has such bytes.
Glib::ustring escape_markup(const Glib::ustring& text);

// The inverse of escape_markup(): each escape that it makes becomes its character again,
// once. All else stays, tags and stray ampersands too.
std::string unescape_markup(const std::string& text);

// `text` with its ampersands as plain words and its tags as they are.
Glib::ustring escape_ampersands(const Glib::ustring& text);

// Whether Pango can parse `text`: what a cell of a tree understands.
bool is_markup(const Glib::ustring& text);

// Whether a label or a dialog can parse `text`: Pango's markup, and links.
bool is_label_markup(const Glib::ustring& text);

// `text` itself if it is valid markup of a label, else markup that shows it as
// it stands, so that no label or dialog comes up empty over a stray "<" or "&".
Glib::ustring readable_markup(const Glib::ustring& text);

// The words of `text` without tags and escapes if it is markup, else `text` as it stands.
Glib::ustring without_markup(const Glib::ustring& text);
