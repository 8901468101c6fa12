-- Adds up to four rows of a product: row j is one of -a, 0, a and 2a, or -2a for the last one, times 4 ** j. A digit
-- is coded as its value plus 1. A negative row is a ones' complement, and what it misses comes in as the carry of the
-- adder that takes the row in; for the lowest row that is the adder behind this part, told by `one_short`. One look-up
-- table a bit of a row, one carry chain for two rows. Registers may stand behind the rows and behind the sums of two.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_product_rows is
  generic (width  : positive;    -- bits of a, two's complement
           digits : positive;    -- rows, 1 to 4
           twos_border : natural := 0;
           choose_border : natural := 0);
  port (sysclk, enable : in std_logic;
        a         : in std_logic_vector(width - 1 downto 0);
        first     : in std_logic_vector(width downto 0);   -- what row 0 is when has_first is 1; it misses nothing
        has_first : in std_logic;
        codes     : in std_logic_vector(2 * digits - 1 downto 0);   -- lowest digit in the lowest bits
        minus_two : in std_logic;                          -- the last digit, of code 3, is -2
        sum       : out std_logic_vector(width + 7 downto 0);
        one_short      : out std_logic);                        -- 1: the sum is 1 too small
end xfc_product_rows;

architecture rtl of xfc_product_rows is
  constant row_bits : positive := width + 1;
  signal rows_d, rows : std_logic_vector(4 * row_bits - 1 downto 0);
  signal short_d, short : std_logic_vector(3 downto 0);    -- rows that miss their unit
  signal lower_d, upper_d, lower, upper : std_logic_vector(width + 3 downto 0);
  signal two_short_d, two_short : std_logic_vector(1 downto 0);
begin
  assert digits <= 4 report "xfc_product_rows: digits is 1 to 4" severity failure;

  choose : process (a, first, has_first, codes, minus_two)
    variable inverts : std_logic;
    variable code : std_logic_vector(1 downto 0);
    variable value : std_logic_vector(width downto 0);
  begin
    rows_d <= (others => '0');
    short_d <= (others => '0');
    for j in 0 to digits - 1 loop
      code := codes(2 * j + 1 downto 2 * j);
      inverts := '0';
      if j = digits - 1 then
        inverts := minus_two;
      end if;
      if code = "00" then
        value := not (a(width - 1) & a);
      elsif code = "01" then
        value := (others => '0');
      elsif code = "10" then
        value := a(width - 1) & a;
      elsif inverts = '1' then
        value := not (a & '0');
      else
        value := a & '0';
      end if;
      if code = "00" or inverts = '1' then
        short_d(j) <= '1';
      end if;
      if j = 0 and has_first = '1' then
        value := first;
        short_d(j) <= '0';
      end if;
      rows_d(row_bits * (j + 1) - 1 downto row_bits * j) <= value;
    end loop;
  end process;

  choose_0 : entity work.xfc_register generic map (4 * row_bits, choose_border) port map (sysclk, enable, rows_d, rows);
  choose_1 : entity work.xfc_register generic map (4, choose_border) port map (sysclk, enable, short_d, short);

  add_lower : entity work.xfc_add_shifted generic map (width + 1, 2, width + 4)
    port map (rows(row_bits - 1 downto 0), rows(2 * row_bits - 1 downto row_bits), short(1), lower_d);
  add_upper : entity work.xfc_add_shifted generic map (width + 1, 2, width + 4)
    port map (rows(3 * row_bits - 1 downto 2 * row_bits), rows(4 * row_bits - 1 downto 3 * row_bits), short(3),
              upper_d);
  two_short_d <= short(2) & short(0);
  twos_0 : entity work.xfc_register generic map (width + 4, twos_border) port map (sysclk, enable, lower_d, lower);
  twos_1 : entity work.xfc_register generic map (width + 4, twos_border) port map (sysclk, enable, upper_d, upper);
  twos_2 : entity work.xfc_register generic map (2, twos_border) port map (sysclk, enable, two_short_d, two_short);
  add_both : entity work.xfc_add_shifted generic map (width + 4, 4, width + 8)
    port map (lower, upper, two_short(1), sum);
  one_short <= two_short(0);
end rtl;
