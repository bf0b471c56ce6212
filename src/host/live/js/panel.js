// A panel beside the picture, in which the texts of the fields are typed. No playout shows it.

/**
 * What the panel needs of a template.
 * @typedef {{stage: Stage, update: (texts: Map<string, string>) => void, play: () => void, stop: () => void}} PanelHost
 */

/**
 * @param {string} name
 * @param {string} className
 * @param {Node[]} children
 */
function makeElement(name, className, children) {
    const element = document.createElement(name);
    if (className !== '') element.className = className;
    children.forEach(child => element.appendChild(child));
    return element;
}

/**
 * @param {string} text
 * @param {() => void} click
 */
function makeButton(text, click) {
    const button = makeElement('button', '', [document.createTextNode(text)]);
    button.setAttribute('type', 'button');
    button.addEventListener('click', click);
    return button;
}

/** The grounds that the picture can be seen on. */
const kGrounds = ['checkerboard', 'black', 'white', 'green'];

/** @param {string} ground  empty for the clear ground of a playout. */
function setGround(ground) {
    document.documentElement.className = ground === '' ? '' : 'ground-' + ground;
}

function makeGroundChoice() {
    const select = /** @type {HTMLSelectElement} */ (document.createElement('select'));
    for (const ground of kGrounds) select.appendChild(makeElement('option', '', [document.createTextNode(ground)]));
    select.addEventListener('change', () => setGround(select.value));
    return makeElement('label', '', [document.createTextNode('Ground '), select]);
}

class Panel {
    /** @param {PanelHost} host */
    constructor(host) {
        this.host = host;
        /**
         * By the field's index; a field that can't be filled has none.
         * @type {Map<number, HTMLInputElement>}
         */
        this.inputs = new Map();
        this.notes = makeElement('ul', 'notes', []);
        const form = host.stage.form;
        const rows = form.fields.map((field, index) => this.makeRow(field, index));
        const buttons = [makeButton('Play', host.play), makeButton('Stop', host.stop)];
        const none = makeElement('p', '', [document.createTextNode('This graphic has no fields.')]);
        this.element = makeElement('form', 'panel', [
            makeElement('h1', '', [document.createTextNode(form.title)]),
            ...(rows.length > 0 ? rows : [none]),
            makeElement('div', 'buttons', buttons),
            makeGroundChoice(),
            this.notes
        ]);
        this.element.addEventListener('submit', event => event.preventDefault());
        document.body.appendChild(this.element);
        setGround(kGrounds[0]);
        this.refresh();
    }

    /**
     * @param {Field} field
     * @param {number} index
     */
    makeRow(field, index) {
        const label = document.createTextNode(field.name === '' ? field.key : field.name);
        if (field.fault !== '') {
            const fault = makeElement('small', '', [document.createTextNode(field.fault)]);
            return makeElement('p', '', [label, fault]);
        }
        const input = /** @type {HTMLInputElement} */ (document.createElement('input'));
        input.name = field.key;
        input.maxLength = this.host.stage.form.limits.rowCharacters;
        input.autocomplete = 'off';
        input.spellcheck = false;
        input.addEventListener('input', () => this.host.update(new Map([[field.key, input.value]])));
        this.inputs.set(index, input);
        return makeElement('label', '', [label, input]);
    }

    /** Shows the present texts, and what is said about them. */
    refresh() {
        const stage = this.host.stage;
        this.inputs.forEach((input, index) => {
            const value = stage.values.get(index);
            if (input !== document.activeElement)
                input.value = value === undefined ? stage.form.fields[index].text : value;
        });
        this.notes.textContent = '';
        for (const note of stage.notes) {
            const text = stage.form.fields[note.field].address + ': ' + note.text;
            this.notes.appendChild(makeElement('li', '', [document.createTextNode(text)]));
        }
    }

    close() {
        document.body.removeChild(this.element);
        setGround('');
    }
}
