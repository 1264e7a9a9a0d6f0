"""A stand-in for the platform's bridge, for machines without the platform. Every figure and every probe is real."""
