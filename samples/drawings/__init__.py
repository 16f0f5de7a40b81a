"""The drawings that the generator makes."""
