# Recents, favourites, sorting, newly added and hidden applications.
