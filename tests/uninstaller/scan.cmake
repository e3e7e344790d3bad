# What a scan finds.
