// A view: a record of controls, known by name.
