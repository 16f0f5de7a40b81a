"""A small writer of drawings in group codes, and what it takes to look into them."""
