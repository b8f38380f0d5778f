// The sheets. Reading all their elements takes longer than all else, so they stay text while the page opens,
// and become elements one by one when the browser has time, when they come near, or before they are printed.

class Sheets {
  constructor(section) {
    this.waiting = new Set(section.querySelectorAll("noscript"));
    addEventListener("beforeprint", () => this.waiting.forEach((text) => this.show(text)));
    const near = new IntersectionObserver(
      (entries) => {
        for (const entry of entries) if (entry.isIntersecting) this.show(entry.target.querySelector("noscript"));
      },
      { rootMargin: "100%" },
    );
    for (const text of this.waiting) near.observe(text.parentElement);
    this.whenIdle = window.requestIdleCallback ?? ((use) => setTimeout(use, 50, { timeRemaining: () => 0 }));
    this.next();
  }

  next() {
    if (this.waiting.size === 0) return;
    this.whenIdle.call(window, (deadline) => {
      do this.show(this.waiting.values().next().value);
      while (deadline.timeRemaining() > 10 && this.waiting.size > 0);
      this.next();
    });
  }

  show(text) {
    if (!this.waiting.delete(text)) return;
    const sheet = new DOMParser().parseFromString(text.textContent.trim(), "image/svg+xml").documentElement;
    text.replaceWith(sheet);
  }
}
