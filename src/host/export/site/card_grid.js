// A grid of cards of which only the visible ones are in the page.

/** Rows of cards above and below the visible ones. */
const ROWS_BEYOND = 2;

class CardGrid {
    /**
     * @param {HTMLElement} element
     * @param {(item: number) => HTMLAnchorElement} makeCard
     */
    constructor(element, makeCard) {
        this.element = element;
        this.makeCard = makeCard;
        /** @type {ArrayLike<number>} */
        this.items = [];
        /** The place in `items` that the keyboard is at. */
        this.current = 0;
        this.columns = 1;
        /** Pixels from one row or column to the next. */
        this.rowStep = 1;
        this.columnStep = 1;
        /** Cards in the page, by place. @type {Map<number, HTMLElement>} */
        this.cards = new Map();
        window.addEventListener("scroll", () => this.update(), {passive: true});
        let width = element.clientWidth;
        new ResizeObserver(() => {
            if (element.clientWidth !== width) {
                width = element.clientWidth;
                this.layOut();
            }
        }).observe(element);
        element.addEventListener("keydown", (event) => this.onKey(event));
        element.addEventListener("focusin", (event) => this.onFocus(event));
    }

    /**
     * Shows other items.
     * @param {ArrayLike<number>} items
     */
    show(items) {
        this.items = items;
        this.current = 0;
        this.clear();
        this.layOut();
    }

    clear() {
        this.element.replaceChildren();
        this.cards.clear();
    }

    /** Measures a card, places all, and keeps the current one in sight when the number of columns changes. */
    layOut() {
        if (this.items.length === 0) {
            this.element.style.height = "0";
            return;
        }
        const hadFocus = this.element.contains(document.activeElement);
        const style = getComputedStyle(this.element);
        const width = parseFloat(style.getPropertyValue("--card-width"));
        const gap = parseFloat(style.getPropertyValue("--card-gap"));
        this.columns = Math.max(1, Math.floor((this.element.clientWidth + gap) / (width + gap)));
        this.columnStep = (this.element.clientWidth + gap) / this.columns;
        this.element.style.setProperty("--column", `${this.columnStep - gap}px`);
        this.clear();
        const sample = this.place(0);
        this.rowStep = sample.offsetHeight + gap;
        this.element.style.height = `${Math.ceil(this.items.length / this.columns) * this.rowStep}px`;
        this.clear();
        this.update();
        if (hadFocus) {
            this.moveTo(this.current);
        }
    }

    /**
     * @param {number} place
     * @returns {HTMLElement}
     */
    place(place) {
        const item = document.createElement("div");
        item.setAttribute("role", "listitem");
        item.setAttribute("aria-setsize", String(this.items.length));
        item.setAttribute("aria-posinset", String(place + 1));
        item.dataset.place = String(place);
        const x = (place % this.columns) * this.columnStep, y = Math.floor(place / this.columns) * this.rowStep;
        item.style.transform = `translate(${x}px, ${y}px)`;
        const card = this.makeCard(this.items[place]);
        card.tabIndex = place === this.current ? 0 : -1;
        item.append(card);
        this.element.append(item);
        this.cards.set(place, item);
        return item;
    }

    /** Puts the cards that can be seen into the page, and takes out the others. */
    update() {
        const top = window.scrollY - (this.element.getBoundingClientRect().top + window.scrollY);
        const firstRow = Math.max(0, Math.floor(top / this.rowStep) - ROWS_BEYOND);
        const lastRow = Math.ceil((top + window.innerHeight) / this.rowStep) + ROWS_BEYOND;
        const first = firstRow * this.columns, last = Math.min(this.items.length, lastRow * this.columns);
        for (const [place, card] of this.cards) {
            if ((place < first || place >= last) && !card.contains(document.activeElement)) {
                card.remove();
                this.cards.delete(place);
            }
        }
        for (let place = first; place < last; ++place) {
            if (!this.cards.has(place)) {
                this.place(place);
            }
        }
    }

    /**
     * Moves the keyboard's place.
     * @param {number} place
     */
    moveTo(place) {
        if (this.items.length === 0) {
            return;
        }
        const target = Math.min(Math.max(place, 0), this.items.length - 1);
        this.setTab(this.current, -1);
        this.current = target;
        const card = this.cards.get(target) ?? this.place(target);
        this.setTab(target, 0);
        card.querySelector("a")?.focus({preventScroll: true});
        card.scrollIntoView({block: "nearest"});
        this.update();
    }

    /**
     * @param {number} place
     * @param {number} index
     */
    setTab(place, index) {
        const link = this.cards.get(place)?.querySelector("a");
        if (link) {
            link.tabIndex = index;
        }
    }

    /** @param {FocusEvent} event */
    onFocus(event) {
        const item = event.target instanceof Element ? event.target.closest("[data-place]") : null;
        const place = item instanceof HTMLElement ? Number(item.dataset.place) : this.current;
        if (place !== this.current) {
            this.setTab(this.current, -1);
            this.current = place;
            this.setTab(place, 0);
        }
    }

    /** @param {KeyboardEvent} event */
    onKey(event) {
        if (event.altKey || event.ctrlKey || event.metaKey) {
            return;
        }
        const page = this.columns * Math.max(1, Math.floor(window.innerHeight / this.rowStep) - 1);
        /** @type {Record<string, number>} */
        const places = {
            ArrowRight: this.current + 1,
            ArrowLeft: this.current - 1,
            ArrowDown: this.current + this.columns,
            ArrowUp: this.current - this.columns,
            PageDown: this.current + page,
            PageUp: this.current - page,
            Home: 0,
            End: this.items.length - 1,
        };
        if (event.key in places) {
            event.preventDefault();
            this.moveTo(places[event.key]);
        }
    }
}
