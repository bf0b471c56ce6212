// The index of a site: a contact sheet of all messages, with a search over their texts.

/**
 * The data of the index. Names are numbers of a place in the lists.
 * @typedef {object} SiteData
 * @property {{name: string, stem: string}[]} disks stem: the beginning of the names of its files
 * @property {string[]} fonts
 * @property {string[]} fields
 * @property {string[]} folders of the sources
 * @property {SiteMessage[]} messages
 */
/**
 * Disk, number, text, fonts, fields, folder and name of the source, whether it has a picture, title.
 * @typedef {[number, number, string, number[], number[], number, string, boolean, string]} SiteMessage
 */

/** Messages that are folded at once. */
const PIECE = 500;

/**
 * @template {Element} T
 * @param {string} id
 * @param {new () => T} type
 * @returns {T}
 */
function elementOf(id, type) {
    const element = document.getElementById(id);
    if (!(element instanceof type)) {
        throw new Error(`the page has no ${id}`);
    }
    return element;
}

/**
 * @param {string} tag
 * @param {string} className
 * @param {string} text any text; it is never read as markup
 */
function withText(tag, className, text) {
    const element = document.createElement(tag);
    element.className = className;
    element.textContent = text;
    return element;
}

class SitePage {
    /** @param {SiteData} data */
    constructor(data) {
        this.data = data;
        this.query = elementOf("query", HTMLInputElement);
        this.count = elementOf("count", HTMLElement);
        this.filters = {
            disk: elementOf("disk", HTMLSelectElement),
            font: elementOf("font", HTMLSelectElement),
            field: elementOf("field", HTMLSelectElement),
        };
        this.index = new SearchIndex(data.messages.length, (message) => this.columnsOf(message));
        this.grid = new CardGrid(elementOf("messages", HTMLElement), (message) => this.makeCard(message));
        /** @type {string[]} */
        this.searched = [];
        this.fillFilter(this.filters.disk, data.disks.map((disk) => disk.name), (message) => [message[0]]);
        this.fillFilter(this.filters.font, data.fonts, (message) => message[3]);
        this.fillFilter(this.filters.field, data.fields, (message) => message[4]);
        this.readAddress();
        this.update();
        this.query.addEventListener("input", () => this.changed());
        for (const filter of Object.values(this.filters)) {
            filter.addEventListener("change", () => this.changed());
        }
        window.addEventListener("hashchange", () => {
            this.readAddress();
            this.update();
        });
        document.addEventListener("keydown", (event) => this.onKey(event));
        this.prepare();
    }

    /** @param {number} message */
    columnsOf(message) {
        const [, , text, , fields, folder, source] = this.data.messages[message];
        return [text, fields.map((field) => this.data.fields[field]).join("\n"), this.data.folders[folder] + source];
    }

    /** @param {number} message */
    stemOf(message) {
        const [disk, number] = this.data.messages[message];
        return this.data.disks[disk].stem + String(number).padStart(4, "0");
    }

    /** Folds the texts in pauses, so that the first search has nothing left to do. */
    prepare() {
        if (!this.index.prepare(PIECE)) {
            setTimeout(() => this.prepare());
        }
    }

    /**
     * Offers the names that messages have, with the number of messages.
     * @param {HTMLSelectElement} filter
     * @param {string[]} names
     * @param {(message: SiteMessage) => number[]} namesOf
     */
    fillFilter(filter, names, namesOf) {
        const counts = names.map(() => 0);
        for (const message of this.data.messages) {
            for (const name of new Set(namesOf(message))) {
                ++counts[name];
            }
        }
        const order = names.map((_, name) => name).filter((name) => counts[name] > 0);
        order.sort((one, other) => names[one].localeCompare(names[other]));
        for (const name of order) {
            filter.append(new Option(`${names[name] || "(no name)"} (${counts[name]})`, names[name]));
        }
        filter.hidden = order.length < (filter === this.filters.disk ? 2 : 1);
    }

    /** Takes the search from the address, which a page of a message or a bookmark may have. */
    readAddress() {
        const state = new URLSearchParams(location.hash.slice(1));
        this.query.value = state.get("q") ?? "";
        for (const [name, filter] of Object.entries(this.filters)) {
            const value = state.get(name);
            const place = value === null ? 0 : [...filter.options].findIndex((option, n) => n > 0 && option.value === value);
            filter.selectedIndex = Math.max(place, 0);
        }
    }

    /** Keeps the search in the address, for the way back from a message. */
    writeAddress() {
        const state = new URLSearchParams();
        if (this.query.value !== "") {
            state.set("q", this.query.value);
        }
        for (const [name, filter] of Object.entries(this.filters)) {
            if (filter.selectedIndex > 0) {
                state.set(name, filter.value);
            }
        }
        history.replaceState(null, "", "#" + state.toString());
    }

    changed() {
        this.writeAddress();
        this.update();
        window.scrollTo(0, 0);
    }

    /**
     * @param {HTMLSelectElement} filter
     * @param {string[]} names
     * @returns {number} the chosen name; -1 for all
     */
    chosen(filter, names) {
        return filter.selectedIndex > 0 ? names.indexOf(filter.value) : -1;
    }

    update() {
        const {messages, disks, fonts, fields} = this.data;
        const disk = this.chosen(this.filters.disk, disks.map((entry) => entry.name));
        const font = this.chosen(this.filters.font, fonts);
        const field = this.chosen(this.filters.field, fields);
        const found = this.index.find(this.query.value) ?? messages.map((_, message) => message);
        const shown = found.filter((message) => {
            const entry = messages[message];
            return (disk < 0 || entry[0] === disk) && (font < 0 || entry[3].includes(font)) &&
                (field < 0 || entry[4].includes(field));
        });
        this.searched = parseQuery(this.query.value).parts;
        const all = messages.length.toLocaleString();
        this.count.textContent = shown.length === messages.length
            ? `${all} ${messages.length === 1 ? "message" : "messages"}`
            : `${shown.length.toLocaleString()} of ${all}`;
        this.grid.element.classList.toggle("searched", this.searched.length > 0);
        elementOf("nothing", HTMLElement).hidden = shown.length > 0;
        this.grid.show(shown);
    }

    /**
     * The first row with a word of the search, unless the title has it.
     * @param {number} message
     */
    hitOf(message) {
        const [, , text, , , , , , title] = this.data.messages[message];
        const has = (/** @type {string} */ row) => {
            const folded = foldedWords(row);
            return this.searched.some((part) => folded.includes(part));
        };
        return this.searched.length === 0 || has(title) ? "" : text.split("\n").find(has) ?? "";
    }

    /**
     * @param {number} message
     * @returns {HTMLAnchorElement}
     */
    makeCard(message) {
        const [, , , , , , , hasPicture, title] = this.data.messages[message];
        const stem = this.stemOf(message);
        const card = document.createElement("a");
        card.href = `pages/${stem}.html`;
        if (hasPicture) {
            const picture = new Image();
            picture.loading = "lazy";
            picture.alt = "";
            picture.src = `thumbnails/${stem}.png`;
            card.append(picture);
        } else {
            card.append(withText("span", "none", "no picture"));
        }
        const [disk, number] = this.data.messages[message];
        const label = String(number).padStart(4, "0");
        const name = this.data.disks.length > 1 ? `${label} ${this.data.disks[disk].name}` : label;
        card.append(withText("b", "", name), withText("span", "title", title || "(no text)"),
            withText("span", "hit", this.hitOf(message)));
        return card;
    }

    /** @param {KeyboardEvent} event */
    onKey(event) {
        const inQuery = document.activeElement === this.query;
        if (event.key === "/" && !inQuery && !event.ctrlKey && !event.altKey && !event.metaKey) {
            event.preventDefault();
            this.query.select();
        } else if (event.key === "ArrowDown" && inQuery) {
            event.preventDefault();
            this.grid.moveTo(0);
        } else if (event.key === "Escape" && this.query.value !== "") {
            this.query.value = "";
            this.query.focus();
            this.changed();
        }
    }
}

new SitePage(JSON.parse(elementOf("data", HTMLScriptElement).text));
