# What removes it.
