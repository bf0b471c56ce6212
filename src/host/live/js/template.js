// Shows the message of the element zeltrans-form.
