"""Writes a record of recent documents as the toolkits do: with GLib's own bookmark file.

write_bookmarks.py RECORD   reads lines "uri TAB title TAB modified TAB visited TAB private TAB application" from
standard input; times are seconds since 1970, private is 0 or 1, an empty title is none.
"""

import ctypes
import sys

glib = ctypes.CDLL("libglib-2.0.so.0")
glib.g_bookmark_file_new.restype = ctypes.c_void_p
text, time, record = ctypes.c_char_p, ctypes.c_long, ctypes.c_void_p
glib.g_bookmark_file_set_title.argtypes = [record, text, text]
glib.g_bookmark_file_set_mime_type.argtypes = [record, text, text]
glib.g_bookmark_file_add_application.argtypes = [record, text, text, text]
glib.g_bookmark_file_add_group.argtypes = [record, text, text]
glib.g_bookmark_file_set_is_private.argtypes = [record, text, ctypes.c_int]
glib.g_bookmark_file_set_modified.argtypes = [record, text, time]
glib.g_bookmark_file_set_visited.argtypes = [record, text, time]
glib.g_bookmark_file_to_file.argtypes = [record, text, ctypes.c_void_p]

bookmarks = glib.g_bookmark_file_new()
for line in sys.stdin.buffer.read().splitlines():
    uri, title, modified, visited, private, application = line.split(b"\t")
    glib.g_bookmark_file_set_mime_type(bookmarks, uri, b"text/plain")
    glib.g_bookmark_file_add_application(bookmarks, uri, application, b"'" + application + b" %u'")
    glib.g_bookmark_file_add_group(bookmarks, uri, b"Office & <more>")
    if title:
        glib.g_bookmark_file_set_title(bookmarks, uri, title)
    glib.g_bookmark_file_set_is_private(bookmarks, uri, int(private))
    glib.g_bookmark_file_set_visited(bookmarks, uri, int(visited))
    glib.g_bookmark_file_set_modified(bookmarks, uri, int(modified))
sys.exit(0 if glib.g_bookmark_file_to_file(bookmarks, sys.argv[1].encode(), None) else 1)
