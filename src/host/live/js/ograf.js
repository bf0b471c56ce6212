// The class of an OGraf graphic.
