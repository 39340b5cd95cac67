document.title = "The scripts of the page run";
